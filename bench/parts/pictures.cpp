#include "parts/pictures.h"

#include <QGuiApplication>
#include <QScreen>

void loadFonts() {
    chromosomeImage(paintChromosome, {{1, 2}, {1.0, 2.0}}, Join::No);
}

PlotGeometry geometryOf(const Points& points) {
    return plotGeometry(points, QGuiApplication::primaryScreen()->geometry().size());
}

QImage genomeImage(decltype(paintGenome) paint, const GenomeScan& scan) {
    return paint(geometryOf(scan.points), {scan.points.positions, scan.points.values},
                 {QStringLiteral("scan"), scan.chromosomes, true});
}

QImage chromosomeImage(decltype(paintChromosome) paint, const Points& points, Join join) {
    return paint(geometryOf(points), {points.positions, points.values},
                 {{}, join == Join::Yes, true});
}
