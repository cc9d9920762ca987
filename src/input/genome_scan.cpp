#include "input/genome_scan.h"

#include "input/association_file.h"
#include "input/marker.h"
#include "input/point_collector.h"
#include "input/utf8.h"
#include "int_arithmetic.h"

#include <algorithm>
#include <string>

namespace {

constexpr int basePairsPerUnit = 100;

struct Chromosome {
    std::string label; // UTF-8
    qsizetype firstPoint;
};

// Reads all points and lays their chromosomes end to end on the genome axis: every point keeps its
// distance from the first point of its chromosome, which lies one unit behind the last point of the
// chromosome before.
std::optional<Fault> readPoints(AssociationFile& file, PointCollector& points,
                                QList<Chromosome>& chromosomes) {
    Record record;
    Marker marker;
    int coordinate = 0, shift = 0;
    while (file.next(record)) {
        if (const MarkerResult result = readMarker(record, marker); result != MarkerResult::Kept) {
            if (const std::optional<Fault> fault = faultOf(result))
                return fault;
            continue;
        }
        const int position = marker.position / basePairsPerUnit;
        if (chromosomes.isEmpty() || chromosomes.constLast().label != record.chromosome) {
            chromosomes.append({std::string(record.chromosome), points.size()});
            shift = wrappedSum(wrappedDifference(coordinate, position), 1);
        }
        coordinate = wrappedSum(position, shift);
        points.append(coordinate, marker.pValue);
    }
    return file.fault();
}

ChromosomeIndex indexOf(const QList<Chromosome>& chromosomes, const QList<int>& positions) {
    ChromosomeIndex index;
    for (qsizetype c = 0; c < chromosomes.size(); ++c) {
        const bool isFirst = c == 0, isLast = c + 1 == chromosomes.size();
        const qsizetype start = isFirst ? 0 : chromosomes[c].firstPoint + 1;
        const qsizetype end = isLast ? positions.size() - 1 : chromosomes[c + 1].firstPoint;
        index.tags.append(fromUtf8(chromosomes[c].label));
        index.startIndex.append(static_cast<int>(start));
        index.endIndex.append(static_cast<int>(end));
        // A last chromosome of one point has no second point to start at: it starts at that one.
        index.startValue.append(positions[std::min(start, positions.size() - 1)]);
        index.endValue.append(positions[end]);
        index.colorValue.append(c % 2 == 0 ? 255 : 50);
    }
    return index;
}

} // namespace

Result<GenomeScan> scanGenome(AssociationFile& file) {
    PointCollector points;
    QList<Chromosome> chromosomes;
    if (const std::optional<Fault> fault = readPoints(file, points, chromosomes))
        return *fault;
    if (points.size() < 2)
        return Fault::TooFewGenomePoints;
    GenomeScan scan;
    scan.points = points.take();
    scan.chromosomes = indexOf(chromosomes, scan.points.positions);
    return scan;
}
