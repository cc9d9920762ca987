#include "genome_scan.h"

#include "int_arithmetic.h"
#include "point_collector.h"
#include "utf8.h"

#include <algorithm>
#include <string>

namespace {

constexpr int basePairsPerUnit = 100;

// Reads all points. Every point keeps its distance from the first point of its chromosome, which
// lies one unit after the last point of the chromosome before.
void readPoints(AssociationFile& file, PointCollector& points, QList<Chromosome>& chromosomes) {
    Record record;
    Marker marker;
    std::string label; // UTF-8
    int coordinate = 0, shift = 0;
    while (file.next(record)) {
        if (!file.readMarker(record, marker))
            continue;
        const int position = marker.position / basePairsPerUnit;
        if (points.size() == 0 || label != record.chromosome) {
            label = record.chromosome;
            chromosomes.append({.label = fromUtf8(label), .firstPoint = points.size()});
            shift = wrappedSum(wrappedDifference(coordinate, position), 1);
        }
        coordinate = wrappedSum(position, shift);
        points.append(coordinate, marker.pValue);
    }
}

void setBounds(QList<Chromosome>& chromosomes, const QList<int>& coordinates) {
    const qsizetype lastPoint = coordinates.size() - 1, last = chromosomes.size() - 1;
    for (qsizetype c = 0; c <= last; ++c) {
        Chromosome& chromosome = chromosomes[c];
        const qsizetype start = c == 0 ? 0 : chromosome.firstPoint + 1;
        const qsizetype end = c == last ? lastPoint : chromosomes[c + 1].firstPoint;
        chromosome.startIndex = static_cast<int>(start);
        chromosome.endIndex = static_cast<int>(end);
        // A last chromosome of one point has no second point to start at: it starts at that one.
        chromosome.startValue = coordinates[std::min(start, lastPoint)];
        chromosome.endValue = coordinates[end];
    }
}

} // namespace

Result<GenomeScan> scanGenome(QIODevice& device, const ReadOptions& options) {
    AssociationFile file(device, options);
    if (!file.open())
        return *file.fault();
    options.atData();
    PointCollector points;
    GenomeScan scan;
    readPoints(file, points, scan.chromosomes);
    if (file.fault())
        return *file.fault();
    if (points.size() < 2)
        return Fault{FaultCode::TooFewGenomePoints};
    scan.points = points.take();
    setBounds(scan.chromosomes, scan.points.positions);
    return scan;
}
