#pragma once

#include <QString>

// One chromosome of a genome scan: a run of kept points with one label. A label that comes back
// after another one makes a second chromosome.
struct Chromosome {
    QString label = {};
    qsizetype firstPoint = 0; // place in the point list
    // Places in the point list, one late by design: the second point for all but the first
    // chromosome, and the next chromosome's first point for all but the last.
    int startIndex = 0;
    int endIndex = 0;
    // Genome coordinates of the points at those places.
    int startValue = 0;
    int endValue = 0;

    bool operator==(const Chromosome&) const = default;
};
