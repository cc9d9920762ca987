#pragma once

#include "association_file.h"
#include "chromosome.h"
#include "points.h"

#include <QList>

struct GenomeScan {
    QList<Chromosome> chromosomes; // in file order
    Points points;                 // positions are genome coordinates

    bool operator==(const GenomeScan&) const = default;
};

// Reads all markers of a file and lays its chromosomes end to end. The device must be closed. The
// genome coordinate counts units of 100 base pairs: the file's first point is at 1, and each
// chromosome's first point one unit after the point before it. Fewer than two points are a fault.
Result<GenomeScan> scanGenome(QIODevice& device, const ReadOptions& options = {});

// The same for markers in memory, at their positions in base pairs. Each chromosome has its label
// and its first point, and one point at least.
GenomeScan layEndToEnd(QList<Chromosome> chromosomes, Points points);
