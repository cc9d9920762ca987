#pragma once

#include "association_file.h"
#include "fault.h"

#include <optional>

// What a line whose p-value counts tells.
struct Marker {
    int position = 0; // base pairs, as in the file
    double pValue = 0.0;
};

enum class MarkerResult { Kept, Skipped, NonNumericPValue, NonIntegerPosition };

// Reads the marker of one line. A p-value of "NA" is missing, and one of exactly 0 has no
// logarithm: both lines are skipped, with nothing else on them looked at. A bad p-value is told
// before a bad position. What a number is, the toolkit's own conversion decides.
MarkerResult readMarker(const Record& record, Marker& marker);

// The fault that `result` stands for; none where the line was kept or skipped.
std::optional<Fault> faultOf(MarkerResult result);
