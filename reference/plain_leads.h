#pragma once

#include "lead_markers.h"

namespace plain {

// What leadMarkers() promises, by looking at every pair of markers.
std::vector<LeadMarker> leadMarkers(const ScanTable& table, const LeadRule& rule);

} // namespace plain
