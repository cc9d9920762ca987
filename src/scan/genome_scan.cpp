#include "genome_scan.h"

#include "int_arithmetic.h"
#include "point_collector.h"
#include "utf8.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

constexpr int basePairsPerUnit = 100;

// Every point keeps its distance from the first point of its chromosome, which lies one unit after
// the last point of the chromosome before.
class GenomeAxis {
public:
    void startChromosome(int firstPosition) {
        m_shift = wrappedSum(wrappedDifference(m_coordinate, unitOf(firstPosition)), 1);
    }
    int coordinateOf(int position) { return m_coordinate = wrappedSum(unitOf(position), m_shift); }

private:
    static int unitOf(int position) { return position / basePairsPerUnit; }

    int m_coordinate = 0; // of the last point
    int m_shift = 0;
};

void readPoints(AssociationFile& file, PointCollector& points, QList<Chromosome>& chromosomes) {
    Record record;
    Marker marker;
    std::string label; // UTF-8
    GenomeAxis axis;
    while (file.next(record)) {
        if (!file.readMarker(record, marker))
            continue;
        if (points.size() == 0 || label != record.chromosome) {
            label = record.chromosome;
            chromosomes.append({.label = fromUtf8(label), .firstPoint = points.size()});
            axis.startChromosome(marker.position);
        }
        points.append(axis.coordinateOf(marker.position), marker.pValue);
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

GenomeScan layEndToEnd(QList<Chromosome> chromosomes, Points points) {
    GenomeAxis axis;
    int* const positions = points.positions.data();
    for (qsizetype c = 0; c < chromosomes.size(); ++c) {
        const qsizetype end =
            c + 1 < chromosomes.size() ? chromosomes[c + 1].firstPoint : points.positions.size();
        const qsizetype first = chromosomes[c].firstPoint;
        axis.startChromosome(positions[first]);
        std::transform(positions + first, positions + end, positions + first,
                       [&](int position) { return axis.coordinateOf(position); });
    }
    setBounds(chromosomes, points.positions);
    return {std::move(chromosomes), std::move(points)};
}
