#pragma once

#include "plot_geometry.h"
#include "point_marks.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPen>
#include <QString>
#include <span>

// What both plots are drawn with.

// A white image of the plot's size; null where it has none.
QImage whiteImage(const PlotGeometry& geometry);

QFont plotFont(int pointSize);

// A painter on an image, the one pen that all of a plot is drawn with, and the quick marks. Marks
// are collected, and are on the image before anything else is drawn over them and when the canvas
// is gone.
class Canvas {
public:
    // For an image in RGB32 that is not shared, not null, and outlives this.
    Canvas(QImage& image, int dotWidth);
    ~Canvas() { settle(); }
    Q_DISABLE_COPY_MOVE(Canvas)

    // Not to be kept while marks are drawn.
    QPainter& painter() {
        settle();
        return m_painter;
    }
    void setColor(const QColor& color);

    // Draws a dot at each x and y; at most DotStamp::mostAtOnce, any coordinates.
    void putDots(std::span<const int> x, std::span<const int> y, QRgb color) {
        m_dots.put(x, y, color);
    }

    // Draws a segment of the dots' width from where the last one ended, if there was one since the
    // line was lifted.
    void lineTo(QPoint to, QRgb color) { m_line.goTo(to, color); }
    void liftLine() { m_line.lift(); }

private:
    void settle();

    DotStamp m_dots;
    QPainter m_painter;
    QPen m_pen;
    SegmentPath m_line;
};

// Lines at the -log10 p of 7.3, 6, 5, 4 and 3, each with its number at the left edge.
void paintReferenceLines(Canvas& canvas, const PlotGeometry& geometry);

// The text, centred at the top edge.
void paintTitle(Canvas& canvas, const PlotGeometry& geometry, const QString& title);
