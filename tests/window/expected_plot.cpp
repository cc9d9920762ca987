#include "expected_plot.h"

#include "plain_geometry.h"
#include "plain_painter.h"

#include <QCryptographicHash>

static PlotGeometry geometryOf(const State& state) {
    PlotGeometry geometry;
    geometry.width = state.integer("fwidth");
    geometry.height = state.integer("fheight");
    geometry.xMargin = state.integer("xmargin");
    geometry.xMargin2 = state.integer("xmargin2");
    geometry.yMargin = state.integer("ymargin");
    geometry.minX = state.integer("minX");
    geometry.maxX = state.integer("maxX");
    geometry.minY = state.number("minY");
    geometry.maxY = state.number("maxY");
    geometry.realMinX = state.integer("realMinX");
    geometry.realMaxX = state.integer("realMaxX");
    geometry.realMaxY = state.number("realMaxY");
    geometry.pixPerX = state.number("pixPerX");
    geometry.pixPerY = state.number("pixPerY");
    return geometry;
}

ExpectedView::ExpectedView(QList<int> thePositions, QList<double> theValues, QSize screen)
    : Points{std::move(thePositions), std::move(theValues)},
      geometry(plain::plotGeometry(*this, screen)) {}

int ExpectedView::x(int position) const {
    return plain::pixelOf(geometry, position, 0.0).x();
}

int ExpectedView::y(double value) const {
    return plain::pixelOf(geometry, 0, value).y();
}

QStringList ExpectedView::differencesTo(const State& state) const {
    QStringList differences;
    const QString expected = plain::toText(geometry), got = plain::toText(geometryOf(state));
    if (got != expected)
        differences << got << "instead of" << expected;
    if (positions != state.integers("Pos_list") || values != state.numbers("Value_list"))
        differences << "the points differ";
    return differences;
}

GenomePlot genomePlot(const QString& title, const QStringList& labels,
                      const QList<int>& startValues) {
    GenomePlot plot{title, {}, true};
    for (qsizetype k = 0; k < labels.size(); ++k)
        plot.chromosomes.append({.label = labels[k], .startValue = startValues[k]});
    return plot;
}

QImage expectedChromosomePlot(const ExpectedView& view, const ChromosomePlot& plot) {
    return plain::paintChromosome(view.geometry, {view.positions, view.values}, plot);
}

QImage expectedGenomePlot(const ExpectedView& view, const GenomePlot& plot) {
    return plain::paintGenome(view.geometry, {view.positions, view.values}, plot);
}

QString picture(const QImage& image) {
    const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (int y = 0; y < pixels.height(); ++y)
        hash.addData({reinterpret_cast<const char*>(pixels.constScanLine(y)), pixels.width() * 4});
    return QStringLiteral("%1x%2 %3")
        .arg(pixels.width())
        .arg(pixels.height())
        .arg(QLatin1String(hash.result().toHex()));
}

int pixelsOf(const QImage& image, const QColor& color) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == color;
    return count;
}
