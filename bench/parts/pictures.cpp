#include "parts/pictures.h"

#include "plain_painter.h"
#include "plot_painter.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

GenomePlot optionsOf(const GenomeScan& scan) {
    return {QStringLiteral("scan"), scan.chromosomes, true};
}

ChromosomePlot optionsOf(Join join) {
    return {{}, join == Join::Yes, true};
}

PlotPoints spansOf(const Points& points) {
    return {points.positions, points.values};
}

} // namespace

void loadFonts() {
    quickChromosome({{1, 2}, {1.0, 2.0}}, Join::No);
}

PlotGeometry geometryOf(const Points& points) {
    return plotGeometry(points, QGuiApplication::primaryScreen()->geometry().size());
}

QImage quickGenome(const GenomeScan& scan) {
    return paintGenome(geometryOf(scan.points), spansOf(scan.points), optionsOf(scan));
}

QImage plainGenome(const GenomeScan& scan) {
    return plain::paintGenome(geometryOf(scan.points), spansOf(scan.points), optionsOf(scan));
}

QImage quickChromosome(const Points& points, Join join) {
    return paintChromosome(geometryOf(points), spansOf(points), optionsOf(join));
}

QImage plainChromosome(const Points& points, Join join) {
    return plain::paintChromosome(geometryOf(points), spansOf(points), optionsOf(join));
}
