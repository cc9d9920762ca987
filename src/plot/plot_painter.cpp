#include "plot/plot_painter.h"

#include "int_arithmetic.h"

#include <QFont>
#include <QPainter>
#include <QPen>
#include <cmath>

namespace {

constexpr int linePenWidth = 2; // of the reference lines, and of the genome plot's points
constexpr int chromosomePenWidth = 4;
constexpr int titleHeight = 20;
constexpr QColor black(0, 0, 0);

struct ReferenceLevel {
    double level; // -log10 p
    const char* label;
    QColor color;
};

constexpr ReferenceLevel referenceLevels[] = {
    {7.3, "7.3", QColor(25, 180, 25)}, {6.0, "6", QColor(140, 140, 140)},
    {5.0, "5", QColor(170, 170, 170)}, {4.0, "4", QColor(200, 200, 200)},
    {3.0, "3", QColor(230, 230, 230)},
};

QFont plotFont(int pointSize) {
    return QFont(QStringLiteral("Calibri"), pointSize, QFont::Normal, false);
}

QImage whiteImage(const PlotGeometry& geometry) {
    QImage image(geometry.width, geometry.height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

// One painter on one image, and the one pen that all of a plot is drawn with.
class Canvas {
public:
    Canvas(QImage& image, int penWidth) : m_painter(&image), m_pen(m_painter.pen()) {
        setPenWidth(penWidth);
    }

    QPainter& painter() { return m_painter; }

    void setPenWidth(int width) {
        m_pen.setWidth(width);
        m_painter.setPen(m_pen);
    }

    void setColor(const QColor& color) {
        m_pen.setColor(color);
        m_painter.setPen(m_pen);
    }

private:
    QPainter m_painter;
    QPen m_pen;
};

// Most levels lie outside of the view, some unimaginably far: their line and label show nothing.
bool isNearImage(int y, const PlotGeometry& geometry) {
    constexpr int highestLabel = 200; // pixels
    return y >= 0 && y <= geometry.height + highestLabel;
}

void paintReferenceLines(Canvas& canvas, const PlotGeometry& geometry) {
    for (const ReferenceLevel& reference : referenceLevels) {
        const int y = geometry.yOfLevel(reference.level);
        if (!isNearImage(y, geometry))
            continue;
        canvas.setColor(reference.color);
        canvas.painter().drawLine(0, y, geometry.width, y);
        canvas.painter().drawText(QRectF(0, 0, geometry.width, y), Qt::AlignBottom | Qt::AlignLeft,
                                  QLatin1String(reference.label));
    }
}

void paintTitle(Canvas& canvas, const PlotGeometry& geometry, const QString& title) {
    canvas.setColor(black);
    canvas.painter().setFont(plotFont(12));
    canvas.painter().drawText(QRectF(0, 0, geometry.width, titleHeight), Qt::AlignCenter, title);
}

// The red component that points get, and the chromosome they are named by, as one walks along them.
class ChromosomeWalk {
public:
    explicit ChromosomeWalk(const GenomePlot& plot) : m_plot(plot) {}

    // The chromosome of a genome coordinate: the last one that starts at or before it. The first
    // one is never asked, so a point left of all others keeps the colour of the point before it.
    qsizetype step(int position) {
        qsizetype k = m_plot.startValue.size() - 1;
        while (k > 0 && m_plot.startValue[k] > position)
            --k;
        if (k > 0)
            m_red = m_plot.colorValue[k];
        return k;
    }

    QColor color() const { return QColor(m_red, 50, 50); }

private:
    const GenomePlot& m_plot;
    int m_red = 255;
};

void paintLabel(QPainter& painter, const QString& label, int start, int end, int height) {
    painter.drawText(QRectF(start, 0, wrappedDifference(end, start), height),
                     Qt::AlignBottom | Qt::AlignCenter, label);
}

void paintGenomePoints(Canvas& canvas, const PlotGeometry& geometry, PlotPoints points,
                       const GenomePlot& plot) {
    ChromosomeWalk walk(plot);
    int labelStart = 0, labelEnd = 0, previousX = 0;
    QString label, previousLabel = plot.tags.constFirst();
    for (std::size_t i = 0; i < points.positions.size(); ++i) {
        const int x = geometry.xOf(points.positions[i]);
        if (i == 0)
            labelStart = previousX = x;
        labelEnd = previousX;
        previousX = x;
        label = plot.tags[walk.step(points.positions[i])];
        if (label != previousLabel) {
            canvas.painter().setFont(plotFont(10));
            paintLabel(canvas.painter(), previousLabel, labelStart, labelEnd, geometry.height);
            labelStart = x;
        }
        previousLabel = label;
        canvas.setColor(walk.color());
        if (!std::isnan(points.values[i]))
            canvas.painter().drawPoint(x, geometry.yOf(points.values[i]));
    }
    paintLabel(canvas.painter(), label, labelStart, labelEnd, geometry.height);
}

QColor chromosomeColor(const PositionRange& highlight, int position) {
    return highlight.contains(position) ? QColor(255, 50, 50) : QColor(50, 50, 255);
}

void paintDots(Canvas& canvas, const PlotGeometry& geometry, PlotPoints points,
               const PositionRange& highlight) {
    for (std::size_t i = 0; i < points.positions.size(); ++i) {
        if (std::isnan(points.values[i]))
            continue;
        canvas.setColor(chromosomeColor(highlight, points.positions[i]));
        canvas.painter().drawPoint(geometry.xOf(points.positions[i]),
                                   geometry.yOf(points.values[i]));
    }
}

// A segment has the colour of the point it ends at.
void paintSegments(Canvas& canvas, const PlotGeometry& geometry, PlotPoints points,
                   const PositionRange& highlight) {
    for (std::size_t i = 1; i < points.positions.size(); ++i) {
        if (std::isnan(points.values[i - 1]) || std::isnan(points.values[i]))
            continue;
        canvas.setColor(chromosomeColor(highlight, points.positions[i]));
        canvas.painter().drawLine(
            geometry.xOf(points.positions[i - 1]), geometry.yOf(points.values[i - 1]),
            geometry.xOf(points.positions[i]), geometry.yOf(points.values[i]));
    }
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
    Canvas canvas(image, linePenWidth);
    if (plot.referenceLines)
        paintReferenceLines(canvas, geometry);
    paintGenomePoints(canvas, geometry, points, plot);
    paintTitle(canvas, geometry,
               plot.title + QLatin1String(", max(-logP)=") + valueText(geometry.realMaxY));
    return image;
}

QImage paintChromosome(const PlotGeometry& geometry, PlotPoints points,
                       const ChromosomePlot& plot) {
    QImage image = whiteImage(geometry);
    if (image.isNull())
        return image;
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
        paintDots(canvas, geometry, points, plot.highlight);
    paintTitle(canvas, geometry, QLatin1String("max=") + valueText(geometry.realMaxY));
    paintPositionScale(canvas, geometry);
    return image;
}
