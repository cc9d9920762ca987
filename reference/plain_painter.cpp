#include "plain_painter.h"

#include <QFont>
#include <QPainter>
#include <QPen>
#include <cmath>
#include <cstdint>

namespace plain {

namespace {

int truncatedToInt(double number) {
    if (std::isnan(number) || number <= -2147483649.0 || number >= 2147483648.0)
        return INT32_MIN;
    return static_cast<int>(number);
}

int wrapped(std::int64_t number) {
    return static_cast<int>(static_cast<std::uint32_t>(number));
}

int difference(int a, int b) {
    return wrapped(std::int64_t(a) - b);
}

int rowOfLevel(const PlotGeometry& geometry, double level) {
    const int up = truncatedToInt(geometry.pixPerY * (level - geometry.minY));
    return wrapped(std::int64_t(geometry.height) - geometry.yMargin - up);
}

QPoint pixelOf(const PlotGeometry& geometry, int position, double value) {
    const int fromLeft = difference(position, geometry.minX);
    return {std::isinf(geometry.pixPerX) ? geometry.width / 2
                                         : truncatedToInt(geometry.pixPerX * fromLeft),
            std::isinf(geometry.pixPerY) ? geometry.height / 2 : rowOfLevel(geometry, value)};
}

// A text in a rectangle that starts at the image's top edge.
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

void drawTitle(QPainter& painter, QPen& pen, const PlotGeometry& geometry, const QString& title) {
    pen.setColor(QColor(0, 0, 0, 255));
    painter.setPen(pen);
    painter.setFont(QFont("Calibri", 12, QFont::Normal, false));
    drawText(painter, 0, geometry.width, 20, Qt::AlignCenter | Qt::AlignVCenter, title);
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
        qsizetype k = plot.chromosomes.size() - 1;
        for (; k > 0; --k) {
            if (plot.chromosomes[k].startValue <= points.positions[i]) {
                red = k % 2 == 0 ? 255 : 50;
                break;
            }
        }
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

QString inThrees(int number) {
    const QString digits = QString::number(number, 10);
    QString grouped;
    int counter = 0;
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        ++counter;
        grouped.prepend(digits[i]);
        if (counter == 3 && i >= 1) {
            grouped.prepend(u',');
            counter = 0;
        }
    }
    return grouped;
}

void drawPositionScale(QPainter& painter, const PlotGeometry& geometry) {
    const auto drawAtBottom = [&](int alignment, const QString& text) {
        drawText(painter, 0, geometry.width, geometry.height - 2, Qt::AlignBottom | alignment,
                 text);
    };
    painter.setFont(QFont("Calibri", 10, QFont::Normal, false));
    drawAtBottom(Qt::AlignLeft, inThrees(geometry.realMinX));
    drawAtBottom(Qt::AlignRight, inThrees(geometry.realMaxX));
    const QString span = inThrees(difference(geometry.realMaxX, geometry.realMinX));
    drawAtBottom(Qt::AlignCenter, "|<-- " + span + " -->|");
}

} // namespace

QImage paintGenome(const PlotGeometry& geometry, PlotPoints points, const GenomePlot& plot) {
    QImage image(geometry.width, geometry.height, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.fill(Qt::white);
    QPainter painter(&image);
    QPen pen = painter.pen();
    pen.setWidth(2);
    painter.setPen(pen);
    if (plot.referenceLines)
        drawReferenceLines(painter, pen, geometry);
    drawGenomePoints(painter, pen, geometry, points, plot);
    drawTitle(painter, pen, geometry,
              plot.title + ", max(-logP)=" + QString::number(geometry.realMaxY, 'g', 6));
    return image;
}

QImage paintChromosome(const PlotGeometry& geometry, PlotPoints points,
                       const ChromosomePlot& plot) {
    QImage image(geometry.width, geometry.height, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.fill(Qt::white);
    QPainter painter(&image);
    QPen pen = painter.pen();
    pen.setWidth(2);
    painter.setPen(pen);
    if (plot.referenceLines)
        drawReferenceLines(painter, pen, geometry);
    if (points.positions.empty()) {
        pen.setColor(QColor(0, 0, 0, 255));
        painter.setPen(pen);
        painter.setFont(QFont("Calibri", 12, QFont::Normal, false));
        drawText(painter, 0, geometry.width, geometry.height, Qt::AlignCenter, "no points");
        return image;
    }
    pen.setWidth(4);
    drawChromosomePoints(painter, pen, geometry, points, plot);
    drawTitle(painter, pen, geometry, "max=" + QString::number(geometry.realMaxY, 'g', 6));
    drawPositionScale(painter, geometry);
    return image;
}

} // namespace plain
