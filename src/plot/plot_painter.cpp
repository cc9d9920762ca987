#include "plot_painter.h"

#include "int_arithmetic.h"
#include "chromosome_walk.h"
#include "plot_canvas.h"
#include "point_marks.h"

#include <algorithm>
#include <array>
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
// that ended it, and is cut off at the stretch's ends. Beside the image, or where the stretch has
// no width, nothing of it would show.
void paintLabel(Canvas& canvas, const QString& label, int red, int start, int end,
                const PlotGeometry& geometry) {
    constexpr int overhang = 100; // pixels, more than a letter sticks out of its place
    const QRectF stretch(start, 0, wrappedDifference(end, start), geometry.height);
    const QRectF nearImage(-overhang, 0, geometry.width + 2 * overhang, geometry.height);
    if (start == end || !stretch.intersects(nearImage))
        return;
    canvas.setColor(genomeColor(red));
    canvas.painter().drawText(stretch, Qt::AlignBottom | Qt::AlignCenter, label);
}

// The points from a place on, at most `count` of them.
PlotPoints part(PlotPoints points, std::size_t from, std::size_t count) {
    const std::size_t most = std::min(count, points.positions.size() - from);
    return {points.positions.subspan(from, most), points.values.subspan(from, most)};
}

// The pixels of a few points in a row: in loops of nothing else, of which compilers make vector
// code.
class Pixels {
public:
    static constexpr std::size_t most = DotStamp::mostAtOnce;

    // The geometry is a copy, that no number written here could change.
    Pixels(const PlotGeometry geometry, PlotPoints points) : m_count(points.positions.size()) {
        for (std::size_t i = 0; i < m_count; ++i)
            m_x[i] = geometry.xOf(points.positions[i]);
        for (std::size_t i = 0; i < m_count; ++i)
            m_y[i] = geometry.yOf(points.values[i]);
    }

    std::span<const int> x() const { return {m_x.data(), m_count}; }
    std::span<const int> y() const { return {m_y.data(), m_count}; }

private:
    std::array<int, most> m_x, m_y;
    std::size_t m_count;
};

void paintDots(DotStamp& dots, const PlotGeometry& geometry, PlotPoints points, QRgb color) {
    for (std::size_t from = 0; from < points.positions.size(); from += Pixels::most) {
        const Pixels pixels(geometry, part(points, from, Pixels::most));
        dots.put(pixels.x(), pixels.y(), color);
    }
}

// Where the points that start at `from` and are like it in what `isAlike` asks of positions end.
template <typename Test>
std::size_t endOfAlike(Test isAlike, PlotPoints points, std::size_t from) {
    const auto start = points.positions.begin() + static_cast<std::ptrdiff_t>(from);
    return static_cast<std::size_t>(std::find_if_not(start, points.positions.end(), isAlike) -
                                    points.positions.begin());
}

void paintGenomePoints(Canvas& canvas, DotStamp& dots, const PlotGeometry& geometry,
                       PlotPoints points, const GenomePlot& plot) {
    if (points.positions.empty())
        return;
    const auto xAt = [&](std::size_t i) { return geometry.xOf(points.positions[i]); };
    ChromosomeWalk walk(plot.startValue, plot.colorValue);
    qsizetype chromosome = 0;
    int labelStart = xAt(0);
    bool isFirstLabel = true;
    for (std::size_t i = 0, end = 0; i < points.positions.size(); i = end) {
        const int previousRed = walk.red();
        const qsizetype next = walk.step(points.positions[i]);
        if (next != chromosome && plot.tags[next] != plot.tags[chromosome]) {
            // Not before the first change: the label of a file's only chromosome has another font.
            if (std::exchange(isFirstLabel, false))
                canvas.painter().setFont(plotFont(10));
            dots.flush();
            paintLabel(canvas, plot.tags[chromosome], previousRed, labelStart,
                       xAt(i == 0 ? 0 : i - 1), geometry);
            labelStart = xAt(i);
        }
        chromosome = next;
        end = endOfAlike([&](int position) { return walk.isSameAt(position); }, points, i);
        paintDots(dots, geometry, part(points, i, end - i), genomeColor(walk.red()));
    }
    dots.flush();
    const std::size_t last = points.positions.size() - 1;
    paintLabel(canvas, plot.tags[chromosome], walk.red(), labelStart, xAt(last == 0 ? 0 : last - 1),
               geometry);
}

QRgb chromosomeColor(const PositionRange& highlight, int position) {
    return highlight.contains(position) ? qRgb(255, 50, 50) : qRgb(50, 50, 255);
}

void paintChromosomePoints(DotStamp& dots, const PlotGeometry& geometry, PlotPoints points,
                           const PositionRange& highlight) {
    for (std::size_t i = 0, end = 0; i < points.positions.size(); i = end) {
        const bool isMarked = highlight.contains(points.positions[i]);
        end = endOfAlike([&](int position) { return highlight.contains(position) == isMarked; },
                         points, i);
        paintDots(dots, geometry, part(points, i, end - i),
                  chromosomeColor(highlight, points.positions[i]));
    }
    dots.flush();
}

// A segment has the colour of the point it ends at. There is none to or from what is not a number.
void paintSegments(Canvas& canvas, const PlotGeometry& geometry, PlotPoints points,
                   const PositionRange& highlight) {
    SegmentPath path(canvas.painter());
    for (std::size_t from = 0; from < points.positions.size(); from += Pixels::most) {
        const PlotPoints batch = part(points, from, Pixels::most);
        const Pixels pixels(geometry, batch);
        for (std::size_t i = 0; i < batch.positions.size(); ++i) {
            if (std::isnan(batch.values[i]))
                path.lift();
            else
                path.goTo({pixels.x()[i], pixels.y()[i]},
                          chromosomeColor(highlight, batch.positions[i]));
        }
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
        paintChromosomePoints(dots, geometry, points, plot.highlight);
    paintTitle(canvas, geometry, QLatin1String("max=") + valueText(geometry.realMaxY));
    paintPositionScale(canvas, geometry);
    return image;
}
