#include "plain_painter.h"

#include "plain_geometry.h"
#include "plain_numbers.h"
#include "plain_texts.h"

#include <QFont>
#include <QPainter>
#include <QPen>
#include <QPixmap>
#include <cmath>

namespace plain {

namespace {

// In a rectangle at the image's top edge.
void drawText(QPainter& painter, int left, int width, int height, int alignment,
              const QString& text) {
    painter.drawText(QRectF(left, 0, width, height), alignment, text);
}

void drawReferenceLine(QPainter& painter, QPen& pen, const PlotGeometry& geometry, double level,
                       const QString& label, const QColor& color) {
    pen.setColor(color);
    painter.setPen(pen);
    const int y = rowOfLevel(geometry, level);
    painter.drawLine(0, y, geometry.width, y);
    drawText(painter, 0, geometry.width, y, Qt::AlignBottom | Qt::AlignLeft, label);
}

void drawReferenceLines(QPainter& painter, QPen& pen, const PlotGeometry& geometry) {
    drawReferenceLine(painter, pen, geometry, 7.3, "7.3", QColor(25, 180, 25, 255));
    drawReferenceLine(painter, pen, geometry, 6.0, "6", QColor(140, 140, 140, 255));
    drawReferenceLine(painter, pen, geometry, 5.0, "5", QColor(170, 170, 170, 255));
    drawReferenceLine(painter, pen, geometry, 4.0, "4", QColor(200, 200, 200, 255));
    drawReferenceLine(painter, pen, geometry, 3.0, "3", QColor(230, 230, 230, 255));
}

// Centred in a band at the top edge.
void drawBlackText(QPainter& painter, QPen& pen, int width, int height, const QString& text) {
    pen.setColor(QColor(0, 0, 0, 255));
    painter.setPen(pen);
    painter.setFont(QFont("Calibri", 12, QFont::Normal, false));
    drawText(painter, 0, width, height, Qt::AlignCenter | Qt::AlignVCenter, text);
}

void drawGenomePoints(QPainter& painter, QPen& pen, const PlotGeometry& geometry, PlotPoints points,
                      const GenomePlot& plot) {
    int labelStart = 0, labelEnd = 0, previousX = 0, red = 255;
    QString currentTag, previousTag = plot.chromosomes[0].label;
    const auto drawTag = [&](const QString& tag) {
        drawText(painter, labelStart, difference(labelEnd, labelStart), geometry.height,
                 Qt::AlignBottom | Qt::AlignCenter, tag);
    };
    for (std::size_t i = 0; i < points.positions.size(); ++i) {
        const QPoint pixel = pixelOf(geometry, points.positions[i], points.values[i]);
        if (i == 0)
            labelStart = labelEnd = previousX = pixel.x();
        labelEnd = previousX;
        previousX = pixel.x();
        const qsizetype k = chromosomeOf(points.positions[i], plot.chromosomes);
        if (k > 0)
            red = k % 2 == 0 ? 255 : 50;
        currentTag = plot.chromosomes[k].label;
        if (currentTag != previousTag) {
            painter.setFont(QFont("Calibri", 10, QFont::Normal, false));
            drawTag(previousTag);
            labelStart = pixel.x();
        }
        previousTag = currentTag;
        pen.setColor(QColor(red, 50, 50, 255));
        painter.setPen(pen);
        if (!std::isnan(points.values[i]))
            painter.drawPoint(pixel);
    }
    drawTag(currentTag);
}

void drawChromosomePoints(QPainter& painter, QPen& pen, const PlotGeometry& geometry,
                          PlotPoints points, const ChromosomePlot& plot) {
    for (std::size_t i = plot.joined ? 1 : 0; i < points.positions.size(); ++i) {
        const int position = points.positions[i];
        const bool isMarked = plot.highlight.low <= position && position <= plot.highlight.high;
        pen.setColor(isMarked ? QColor(255, 50, 50, 255) : QColor(50, 50, 255, 255));
        painter.setPen(pen);
        if (std::isnan(points.values[i]))
            continue;
        const QPoint pixel = pixelOf(geometry, position, points.values[i]);
        if (!plot.joined)
            painter.drawPoint(pixel);
        else if (!std::isnan(points.values[i - 1]))
            painter.drawLine(pixelOf(geometry, points.positions[i - 1], points.values[i - 1]),
                             pixel);
    }
}

void drawPositionScale(QPainter& painter, const PlotGeometry& geometry) {
    const auto drawAtBottom = [&](int alignment, const QString& text) {
        drawText(painter, 0, geometry.width, geometry.height - 2, Qt::AlignBottom | alignment,
                 text);
    };
    painter.setFont(QFont("Calibri", 10, QFont::Normal, false));
    drawAtBottom(Qt::AlignLeft, groupedInThrees(geometry.realMinX));
    drawAtBottom(Qt::AlignRight, groupedInThrees(geometry.realMaxX));
    const QString span = groupedInThrees(difference(geometry.realMaxX, geometry.realMinX));
    drawAtBottom(Qt::AlignCenter, "|<-- " + span + " -->|");
}

// A white pixmap with whatever `draw` adds, and reference lines below that if asked for. Both plots
// use one pen throughout and change its colour.
template <typename Draw>
QImage painted(const PlotGeometry& geometry, bool referenceLines, Draw draw) {
    QPixmap pixmap(geometry.width, geometry.height);
    if (pixmap.isNull())
        return QImage();
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    QPen pen = painter.pen();
    pen.setWidth(2);
    painter.setPen(pen);
    if (referenceLines)
        drawReferenceLines(painter, pen, geometry);
    draw(painter, pen);
    painter.end();
    return pixmap.toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace

QImage paintGenome(const PlotGeometry& geometry, PlotPoints points, const GenomePlot& plot) {
    return painted(geometry, plot.referenceLines, [&](QPainter& painter, QPen& pen) {
        drawGenomePoints(painter, pen, geometry, points, plot);
        drawBlackText(painter, pen, geometry.width, 20,
                      plot.title + ", max(-logP)=" + QString::number(geometry.realMaxY, 'g', 6));
    });
}

QImage paintChromosome(const PlotGeometry& geometry, PlotPoints points,
                       const ChromosomePlot& plot) {
    return painted(geometry, plot.referenceLines, [&](QPainter& painter, QPen& pen) {
        if (points.positions.empty()) {
            drawBlackText(painter, pen, geometry.width, geometry.height, "no points");
            return;
        }
        pen.setWidth(4);
        drawChromosomePoints(painter, pen, geometry, points, plot);
        drawBlackText(painter, pen, geometry.width, 20,
                      "max=" + QString::number(geometry.realMaxY, 'g', 6));
        drawPositionScale(painter, geometry);
    });
}

qsizetype chromosomeOf(int position, const QList<Chromosome>& chromosomes) {
    qsizetype k = chromosomes.size() - 1;
    while (k > 0 && chromosomes[k].startValue > position)
        --k;
    return k;
}

QString pixelDifference(const QImage& image, const QImage& expected) {
    if (image == expected)
        return {};
    if (image.size() != expected.size())
        return QStringLiteral("%1 x %2 pixels, expected %3 x %4")
            .arg(image.width())
            .arg(image.height())
            .arg(expected.width())
            .arg(expected.height());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != expected.pixel(x, y))
                return QStringLiteral("at %1, %2: %3, expected %4")
                    .arg(x)
                    .arg(y)
                    .arg(image.pixel(x, y), 8, 16)
                    .arg(expected.pixel(x, y), 8, 16);
    return {};
}

} // namespace plain
