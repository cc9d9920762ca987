#include "marker.h"

#include "number_fields.h"

MarkerResult readMarker(const Record& record, Marker& marker) {
    if (record.pValue == "NA")
        return MarkerResult::Skipped;
    if (!readReal(record.pValue, marker.pValue))
        return MarkerResult::NonNumericPValue;
    if (marker.pValue == 0.0)
        return MarkerResult::Skipped;
    if (!readInteger(record.position, marker.position))
        return MarkerResult::NonIntegerPosition;
    return MarkerResult::Kept;
}

std::optional<Fault> faultOf(MarkerResult result) {
    if (result == MarkerResult::NonNumericPValue)
        return Fault::NonNumericPValue;
    if (result == MarkerResult::NonIntegerPosition)
        return Fault::NonIntegerPosition;
    return std::nullopt;
}
