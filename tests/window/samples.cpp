#include "samples.h"

#include <cmath>

namespace samples {

QByteArray table(const QList<Marker>& markers) {
    QByteArray text = "chr\tpos\tpval\n";
    for (const Marker& marker : markers)
        text +=
            marker.chromosome + '\t' + QByteArray::number(marker.position) + '\t' + marker.p + '\n';
    return text;
}

QList<int> positions(const QList<Marker>& markers) {
    QList<int> positions;
    for (const Marker& marker : markers)
        positions.append(marker.position);
    return positions;
}

QList<double> values(const QList<Marker>& markers) {
    QList<double> values;
    for (const Marker& marker : markers)
        values.append(-std::log10(marker.p.toDouble()));
    return values;
}

QList<Marker> chromosome() {
    return {{"7", 100000, "0.5"},    {"7", 120000, "0.01"},  {"7", 140000, "0.001"},
            {"7", 150000, "2.5e-8"}, {"7", 151000, "1e-4"},  {"7", 160000, "3e-5"},
            {"7", 180000, "1e-6"},   {"7", 200000, "4.2e-7"}};
}

QList<Marker> ruler() {
    return {{"R", 1000, "1"},     {"R", 1100, "1e-14"}, {"R", 1200, "1e-25"}, {"R", 1300, "1e-36"},
            {"R", 1400, "1e-14"}, {"R", 1500, "1e-50"}, {"R", 1582, "1e-3"}};
}

QList<Marker> genome() {
    return {{"A", 1000, "0.1"},  {"A", 2000, "0.01"}, {"A", 3000, "0.002"}, {"B", 500, "1e-4"},
            {"B", 1500, "3e-9"}, {"B", 2500, "5e-5"}, {"C", 10000, "1e-6"}, {"C", 20000, "1e-7"}};
}

QList<int> genomeCoordinates() {
    return {1, 11, 21, 22, 32, 42, 43, 143};
}

GenomePlot genomeLook(const QString& fileName) {
    return genomePlot(fileName, {"A", "B", "C"}, {1, 32, 143});
}

QByteArray chromosomeTable() {
    return table(chromosome());
}

QByteArray rulerTable() {
    return table(ruler());
}

QByteArray genomeTable() {
    return table(genome());
}

ExpectedView chromosomeView() {
    return {positions(chromosome()), values(chromosome())};
}

ExpectedView genomeView() {
    return {genomeCoordinates(), values(genome())};
}

} // namespace samples
