#include "input/marker.h"

#include <cmath>

MarkerResult readMarker(const Record& record, Marker& marker) {
    if (record.pValue == u"NA")
        return MarkerResult::Skipped;
    bool ok = false;
    const double p = record.pValue.toDouble(&ok);
    if (!ok)
        return MarkerResult::NonNumericPValue;
    if (p == 0.0)
        return MarkerResult::Skipped;
    marker.value = -std::log10(p);
    marker.position = record.position.toInt(&ok);
    return ok ? MarkerResult::Kept : MarkerResult::NonIntegerPosition;
}

std::optional<Fault> faultOf(MarkerResult result) {
    if (result == MarkerResult::NonNumericPValue)
        return Fault::NonNumericPValue;
    if (result == MarkerResult::NonIntegerPosition)
        return Fault::NonIntegerPosition;
    return std::nullopt;
}
