#include "plot/plot_painter.h"

#include "int_arithmetic.h"
#include "plot/chromosome_walk.h"
#include "plot/plot_canvas.h"
#include "plot/point_marks.h"

#include <cmath>
#include <utility>

namespace {

constexpr int chromosomePenWidth = 4;
constexpr QColor black(0, 0, 0);

// As the painter's own pen, but for its width.
QPen dotPen(int width) {
    QPen pen;
    pen.setWidth(width);
    return pen;
}

QRgb genomeColor(int red) {
    return qRgb(red, 50, 50);
}

// A label stands under the stretch from its chromosome's first point to the one before the point
// that ended it. Without any width nothing of it would show.
void paintLabel(Canvas& canvas, const QString& label, int red, int start, int end, int height) {
    const int width = wrappedDifference(end, start);
    if (width == 0)
        return;
    canvas.setColor(genomeColor(red));
    canvas.painter().drawText(QRectF(start, 0, width, height), Qt::AlignBottom | Qt::AlignCenter,
                              label);
}

void paintGenomePoints(Canvas& canvas, DotStamp& dots, const PlotGeometry& geometry,
                       PlotPoints points, const GenomePlot& plot) {
    ChromosomeWalk walk(plot.startValue, plot.colorValue);
    qsizetype chromosome = 0;
    int labelStart = 0, labelEnd = 0, previousX = 0;
    bool isFirstLabel = true;
    for (std::size_t i = 0; i < points.positions.size(); ++i) {
        const int x = geometry.xOf(points.positions[i]);
        if (i == 0)
            labelStart = previousX = x;
        labelEnd = previousX;
        previousX = x;
        const int previousRed = walk.red();
        const qsizetype next = walk.step(points.positions[i]);
        if (next != chromosome && plot.tags[next] != plot.tags[chromosome]) {
            // Not before the first change: the label of a file's only chromosome has another font.
            if (std::exchange(isFirstLabel, false))
                canvas.painter().setFont(plotFont(10));
            dots.flush();
            paintLabel(canvas, plot.tags[chromosome], previousRed, labelStart, labelEnd,
                       geometry.height);
            labelStart = x;
        }
        chromosome = next;
        if (!std::isnan(points.values[i]))
            dots.put(x, geometry.yOf(points.values[i]), genomeColor(walk.red()));
    }
    dots.flush();
    paintLabel(canvas, plot.tags[chromosome], walk.red(), labelStart, labelEnd, geometry.height);
}

QRgb chromosomeColor(const PositionRange& highlight, int position) {
    return highlight.contains(position) ? qRgb(255, 50, 50) : qRgb(50, 50, 255);
}

void paintDots(DotStamp& dots, const PlotGeometry& geometry, PlotPoints points,
               const PositionRange& highlight) {
    for (std::size_t i = 0; i < points.positions.size(); ++i) {
        if (std::isnan(points.values[i]))
            continue;
        dots.put(geometry.xOf(points.positions[i]), geometry.yOf(points.values[i]),
                 chromosomeColor(highlight, points.positions[i]));
    }
    dots.flush();
}

// A segment has the colour of the point it ends at.
void paintSegments(Canvas& canvas, const PlotGeometry& geometry, PlotPoints points,
                   const PositionRange& highlight) {
    const auto pixelOf = [&](std::size_t i) {
        return QPoint(geometry.xOf(points.positions[i]), geometry.yOf(points.values[i]));
    };
    SegmentPath path(canvas.painter());
    QPoint from = pixelOf(0);
    for (std::size_t i = 1; i < points.positions.size(); ++i) {
        const QPoint to = pixelOf(i);
        if (!std::isnan(points.values[i - 1]) && !std::isnan(points.values[i]))
            path.add(from, to, chromosomeColor(highlight, points.positions[i]));
        from = to;
    }
    path.finish();
}

void paintPositionScale(Canvas& canvas, const PlotGeometry& geometry) {
    const QRectF area(0, 0, geometry.width, geometry.height - 2);
    QPainter& painter = canvas.painter();
    painter.setFont(plotFont(10));
    painter.drawText(area, Qt::AlignBottom | Qt::AlignLeft, groupedInThrees(geometry.realMinX));
    painter.drawText(area, Qt::AlignBottom | Qt::AlignRight, groupedInThrees(geometry.realMaxX));
    painter.drawText(area, Qt::AlignBottom | Qt::AlignCenter,
                     spanText(geometry.realMinX, geometry.realMaxX));
}

void paintNoPoints(Canvas& canvas, const PlotGeometry& geometry) {
    canvas.setColor(black);
    canvas.painter().setFont(plotFont(12));
    canvas.painter().drawText(QRectF(0, 0, geometry.width, geometry.height), Qt::AlignCenter,
                              QStringLiteral("no points"));
}

} // namespace

QImage paintGenome(const PlotGeometry& geometry, PlotPoints points, const GenomePlot& plot) {
    QImage image = whiteImage(geometry);
    if (image.isNull())
        return image;
    DotStamp dots(image, dotPen(linePenWidth));
    Canvas canvas(image, linePenWidth);
    if (plot.referenceLines)
        paintReferenceLines(canvas, geometry);
    paintGenomePoints(canvas, dots, geometry, points, plot);
    paintTitle(canvas, geometry,
               plot.title + QLatin1String(", max(-logP)=") + valueText(geometry.realMaxY));
    return image;
}

QImage paintChromosome(const PlotGeometry& geometry, PlotPoints points,
                       const ChromosomePlot& plot) {
    QImage image = whiteImage(geometry);
    if (image.isNull())
        return image;
    DotStamp dots(image, dotPen(chromosomePenWidth));
    Canvas canvas(image, linePenWidth);
    if (plot.referenceLines)
        paintReferenceLines(canvas, geometry);
    if (points.positions.empty()) {
        paintNoPoints(canvas, geometry);
        return image;
    }
    canvas.setPenWidth(chromosomePenWidth);
    if (plot.joined)
        paintSegments(canvas, geometry, points, plot.highlight);
    else
        paintDots(dots, geometry, points, plot.highlight);
    paintTitle(canvas, geometry, QLatin1String("max=") + valueText(geometry.realMaxY));
    paintPositionScale(canvas, geometry);
    return image;
}
