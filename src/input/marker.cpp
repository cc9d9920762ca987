#include "input/marker.h"

#include "input/number_fields.h"

#include <cmath>

MarkerResult readMarker(const Record& record, Marker& marker) {
    if (record.pValue == "NA")
        return MarkerResult::Skipped;
    const std::optional<double> p = toReal(record.pValue);
    if (!p)
        return MarkerResult::NonNumericPValue;
    if (*p == 0.0)
        return MarkerResult::Skipped;
    const std::optional<int> position = toInteger(record.position);
    if (!position)
        return MarkerResult::NonIntegerPosition;
    marker = {*position, -std::log10(*p)};
    return MarkerResult::Kept;
}

std::optional<Fault> faultOf(MarkerResult result) {
    if (result == MarkerResult::NonNumericPValue)
        return Fault::NonNumericPValue;
    if (result == MarkerResult::NonIntegerPosition)
        return Fault::NonIntegerPosition;
    return std::nullopt;
}
