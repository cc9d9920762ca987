#include "genome_scan.h"

#include "association_file.h"
#include "marker.h"
#include "point_collector.h"
#include "utf8.h"
#include "int_arithmetic.h"

#include <algorithm>
#include <string>

namespace {

constexpr int basePairsPerUnit = 100;

// The chromosomes met, index-aligned.
struct Chromosomes {
    QStringList tags;
    QList<qsizetype> firstPoints; // places in the point list
};

// Reads all points and lays their chromosomes end to end on the genome axis: every point keeps its
// distance from the first point of its chromosome, which lies one unit behind the last point of the
// chromosome before.
std::optional<Fault> readPoints(AssociationFile& file, PointCollector& points,
                                Chromosomes& chromosomes) {
    Record record;
    Marker marker;
    std::string label; // UTF-8
    int coordinate = 0, shift = 0;
    while (file.next(record)) {
        if (const MarkerResult result = readMarker(record, marker); result != MarkerResult::Kept) {
            if (const std::optional<Fault> fault = faultOf(result))
                return fault;
            continue;
        }
        const int position = marker.position / basePairsPerUnit;
        if (points.size() == 0 || label != record.chromosome) {
            label = record.chromosome;
            chromosomes.tags.append(fromUtf8(label));
            chromosomes.firstPoints.append(points.size());
            shift = wrappedSum(wrappedDifference(coordinate, position), 1);
        }
        coordinate = wrappedSum(position, shift);
        points.append(coordinate, marker.pValue);
    }
    return file.fault();
}

ChromosomeIndex indexOf(const Chromosomes& chromosomes, const QList<int>& positions) {
    const QList<qsizetype>& firstPoints = chromosomes.firstPoints;
    ChromosomeIndex index;
    index.tags = chromosomes.tags;
    for (qsizetype c = 0; c < firstPoints.size(); ++c) {
        const bool isFirst = c == 0, isLast = c + 1 == firstPoints.size();
        const qsizetype start = isFirst ? 0 : firstPoints[c] + 1;
        const qsizetype end = isLast ? positions.size() - 1 : firstPoints[c + 1];
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
    Chromosomes chromosomes;
    if (const std::optional<Fault> fault = readPoints(file, points, chromosomes))
        return *fault;
    if (points.size() < 2)
        return Fault::TooFewGenomePoints;
    GenomeScan scan;
    scan.points = points.take();
    scan.chromosomes = indexOf(chromosomes, scan.points.positions);
    return scan;
}
