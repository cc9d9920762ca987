#pragma once

#include "scan_table.h"

#include <cstddef>
#include <optional>
#include <vector>

// The strongest marker of a region, and what surrounds it.
struct LeadMarker {
    // A tower of neighbours, as linked markers make, tells a signal from a lone faulty marker.
    static constexpr int reach = 250'000; // base pairs

    qsizetype chromosome = 0; // its place in ScanTable::chromosomes
    size_t row = 0;
    // The markers below the threshold to which no other lead is nearer; this one is among them.
    qint64 hits = 0;
    int firstHit = 0, lastHit = 0;  // positions
    qint64 nearby = 0;              // markers within reach, this one included
    std::optional<size_t> neighbor; // the row of the strongest other one there
    bool isLone = true;             // no other one there has half of this one's -log10 p
};

// Which markers become leads.
struct LeadRule {
    double negLog10 = 0.0; // only above this -log10 p
    int window = 500'000;  // base pairs, from 1: the least distance between leads
};

// Picks the strongest marker, then the strongest of those at least a window away from every lead on
// the same chromosome, and so on. Of markers that are equally strong, the first in the file is
// taken; of leads that are equally near to a marker, the stronger one counts it. The leads come in
// order of chromosome and position.
std::vector<LeadMarker> leadMarkers(const ScanTable& table, const LeadRule& rule);
