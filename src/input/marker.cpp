#include "input/marker.h"

#include "input/number_fields.h"

#include <cmath>

MarkerResult readMarker(const Record& record, Marker& marker) {
    if (record.pValue == "NA")
        return MarkerResult::Skipped;
    double p = 0.0;
    if (!readReal(record.pValue, p))
        return MarkerResult::NonNumericPValue;
    if (p == 0.0)
        return MarkerResult::Skipped;
    if (!readInteger(record.position, marker.position))
        return MarkerResult::NonIntegerPosition;
    marker.value = -std::log10(p);
    return MarkerResult::Kept;
}

std::optional<Fault> faultOf(MarkerResult result) {
    if (result == MarkerResult::NonNumericPValue)
        return Fault::NonNumericPValue;
    if (result == MarkerResult::NonIntegerPosition)
        return Fault::NonIntegerPosition;
    return std::nullopt;
}
