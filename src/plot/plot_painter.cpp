#include "plot_painter.h"

#include "chromosome_walk.h"
#include "int_arithmetic.h"
#include "plot_canvas.h"
#include "point_marks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr DotLook genomeDot{2};
constexpr DotLook chromosomeDot{4};

QRgb genomeColor(int red) {
    return qRgb(red, 50, 50);
}

// A label stands under the stretch from its chromosome's first point to the point before the one
// that ended it, and is clipped to the stretch. Nothing of it shows beside the image, or where the
// stretch has no width.
void paintLabel(Canvas& canvas, const QString& label, int red, int start, int end) {
    const PlotGeometry& geometry = canvas.geometry();
    // In pixels, more than a letter reaches beyond its box.
    const int overhang = 100 * geometry.magnification;
    const QRectF stretch(start, 0, wrappedDifference(end, start), geometry.height);
    const QRectF nearImage(-overhang, 0, geometry.width + 2 * overhang, geometry.height);
    if (start == end || !stretch.intersects(nearImage))
        return;
    canvas.setColor(genomeColor(red));
    canvas.drawText(stretch, Qt::AlignBottom | Qt::AlignCenter, label);
}

// The points from a place on, at most `count` of them.
PlotPoints part(PlotPoints points, std::size_t from, std::size_t count) {
    const std::size_t most = std::min(count, points.positions.size() - from);
    return {points.positions.subspan(from, most), points.values.subspan(from, most)};
}

// The pixels of a few consecutive points, computed in loops that compilers vectorize.
class Pixels {
public:
    static constexpr std::size_t most = DotStamp::mostAtOnce;

    // The geometry is a copy, so that the compiler knows that no write here changes it.
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

void paintDots(Canvas& canvas, PlotPoints points, QRgb color) {
    for (std::size_t from = 0; from < points.positions.size(); from += Pixels::most) {
        const Pixels pixels(canvas.geometry(), part(points, from, Pixels::most));
        canvas.putDots(pixels.x(), pixels.y(), color);
    }
}

// The end of the run of points from `from` on whose positions pass.
template <typename Test>
std::size_t endOfRun(Test passes, PlotPoints points, std::size_t from) {
    const auto start = points.positions.begin() + static_cast<std::ptrdiff_t>(from);
    return static_cast<std::size_t>(std::find_if_not(start, points.positions.end(), passes) -
                                    points.positions.begin());
}

void paintGenomePoints(Canvas& canvas, PlotPoints points, const GenomePlot& plot) {
    if (points.positions.empty())
        return;
    const auto xAt = [&](std::size_t i) { return canvas.geometry().xOf(points.positions[i]); };
    ChromosomeWalk walk(plot.chromosomes);
    const auto label = [&](qsizetype i) -> const QString& { return plot.chromosomes[i].label; };
    qsizetype chromosome = 0;
    int labelStart = xAt(0);
    bool isFirstLabel = true;
    for (std::size_t i = 0, end = 0; i < points.positions.size(); i = end) {
        const int previousRed = walk.red();
        const qsizetype next = walk.step(points.positions[i]);
        if (next != chromosome && label(next) != label(chromosome)) {
            // Not before the first change: the label of a file's only chromosome has another font.
            if (std::exchange(isFirstLabel, false))
                canvas.setFont(plotFont(10));
            paintLabel(canvas, label(chromosome), previousRed, labelStart, xAt(i == 0 ? 0 : i - 1));
            labelStart = xAt(i);
        }
        chromosome = next;
        end = endOfRun([&](int position) { return walk.isSameAt(position); }, points, i);
        paintDots(canvas, part(points, i, end - i), genomeColor(walk.red()));
    }
    const std::size_t last = points.positions.size() - 1;
    paintLabel(canvas, label(chromosome), walk.red(), labelStart, xAt(last == 0 ? 0 : last - 1));
}

QRgb chromosomeColor(const PositionRange& highlight, int position) {
    return highlight.contains(position) ? qRgb(255, 50, 50) : qRgb(50, 50, 255);
}

void paintChromosomePoints(Canvas& canvas, PlotPoints points, const PositionRange& highlight) {
    for (std::size_t i = 0, end = 0; i < points.positions.size(); i = end) {
        const bool isMarked = highlight.contains(points.positions[i]);
        end = endOfRun([&](int position) { return highlight.contains(position) == isMarked; },
                       points, i);
        paintDots(canvas, part(points, i, end - i),
                  chromosomeColor(highlight, points.positions[i]));
    }
}

// A segment has the colour of its end point. There is none to or from what is not a number.
void paintSegments(Canvas& canvas, PlotPoints points, const PositionRange& highlight) {
    for (std::size_t from = 0; from < points.positions.size(); from += Pixels::most) {
        const PlotPoints batch = part(points, from, Pixels::most);
        const Pixels pixels(canvas.geometry(), batch);
        for (std::size_t i = 0; i < batch.positions.size(); ++i) {
            if (std::isnan(batch.values[i]))
                canvas.liftLine();
            else
                canvas.lineTo({pixels.x()[i], pixels.y()[i]},
                              chromosomeColor(highlight, batch.positions[i]));
        }
    }
}

void paintPositionScale(Canvas& canvas) {
    const PlotGeometry& geometry = canvas.geometry();
    const QRectF area(0, 0, geometry.width, geometry.height - 2 * geometry.magnification);
    canvas.setFont(plotFont(10));
    canvas.drawText(area, Qt::AlignBottom | Qt::AlignLeft, groupedInThrees(geometry.realMinX));
    canvas.drawText(area, Qt::AlignBottom | Qt::AlignRight, groupedInThrees(geometry.realMaxX));
    canvas.drawText(area, Qt::AlignBottom | Qt::AlignCenter,
                    spanText(geometry.realMinX, geometry.realMaxX));
}

void paintNoPoints(Canvas& canvas) {
    const PlotGeometry& geometry = canvas.geometry();
    canvas.setColor(Qt::black);
    canvas.setFont(plotFont(12));
    canvas.drawText(QRectF(0, 0, geometry.width, geometry.height), Qt::AlignCenter,
                    QStringLiteral("no points"));
}

void drawGenome(Canvas& canvas, PlotPoints points, const GenomePlot& plot) {
    if (plot.referenceLines)
        paintReferenceLines(canvas);
    canvas.startMarks();
    paintGenomePoints(canvas, points, plot);
    paintTitle(canvas,
               plot.title + QLatin1String(", max(-logP)=") + valueText(canvas.geometry().realMaxY));
    paintPointLabels(canvas, plot.labels);
}

void drawChromosome(Canvas& canvas, PlotPoints points, const ChromosomePlot& plot) {
    if (plot.referenceLines)
        paintReferenceLines(canvas);
    if (points.positions.empty()) {
        paintNoPoints(canvas);
        return;
    }
    canvas.startMarks();
    if (plot.joined)
        paintSegments(canvas, points, plot.highlight);
    else
        paintChromosomePoints(canvas, points, plot.highlight);
    paintTitle(canvas, QLatin1String("max=") + valueText(canvas.geometry().realMaxY));
    paintPositionScale(canvas);
    paintPointLabels(canvas, plot.labels);
}

} // namespace

QImage paintGenome(const PlotGeometry& geometry, PlotPoints points, const GenomePlot& plot) {
    return paintedImage(geometry, genomeDot,
                        [&](Canvas& canvas) { drawGenome(canvas, points, plot); });
}

bool printGenome(QPaintDevice& page, const PlotGeometry& geometry, PlotPoints points,
                 const GenomePlot& plot) {
    return paintPage(page, geometry, genomeDot,
                     [&](Canvas& canvas) { drawGenome(canvas, points, plot); });
}

QImage paintChromosome(const PlotGeometry& geometry, PlotPoints points,
                       const ChromosomePlot& plot) {
    return paintedImage(geometry, chromosomeDot,
                        [&](Canvas& canvas) { drawChromosome(canvas, points, plot); });
}

bool printChromosome(QPaintDevice& page, const PlotGeometry& geometry, PlotPoints points,
                     const ChromosomePlot& plot) {
    return paintPage(page, geometry, chromosomeDot,
                     [&](Canvas& canvas) { drawChromosome(canvas, points, plot); });
}
