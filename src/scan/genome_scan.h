#pragma once

#include "fault.h"
#include "points.h"

#include <QStringList>
#include <QVector>

class AssociationFile;

// The chromosomes of a file in file order, all lists index-aligned. A chromosome here is a run of
// kept points with one label: a label that comes back after another one has a second entry.
struct ChromosomeIndex {
    QStringList tags;
    // Places in the point list. One place late by design: the second point for all but the first
    // chromosome, and the next chromosome's first point for all but the last.
    QVector<int> startIndex;
    QVector<int> endIndex;
    // Genome coordinates of the points at those places.
    QVector<int> startValue;
    QVector<int> endValue;
    QVector<int> colorValue; // red component in the genome plot: 255, 50, 255, 50 ...

    bool operator==(const ChromosomeIndex&) const = default;
};

struct GenomeScan {
    ChromosomeIndex chromosomes;
    Points points; // positions are genome coordinates

    bool operator==(const GenomeScan&) const = default;
};

// Reads all markers of an opened file and lays its chromosomes end to end: the genome coordinate
// counts units of 100 base pairs, the file's first point is at 1, and each chromosome's first point
// one unit behind the point before it. Fewer than two points are a fault.
Result<GenomeScan> scanGenome(AssociationFile& file);
