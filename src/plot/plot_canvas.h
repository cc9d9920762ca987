#pragma once

#include "plot_geometry.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPen>
#include <QString>

// What both plots are made with.

constexpr int linePenWidth = 2; // of the reference lines, and of the genome plot's points

// A white image of the plot's size; null where it has none.
QImage whiteImage(const PlotGeometry& geometry);

QFont plotFont(int pointSize);

// One painter on one image, and the one pen that all of a plot is drawn with.
class Canvas {
public:
    Canvas(QImage& image, int penWidth);

    QPainter& painter() { return m_painter; }
    void setPenWidth(int width);
    void setColor(const QColor& color);

private:
    QPainter m_painter;
    QPen m_pen;
};

// Lines at the -log10 p of 7.3, 6, 5, 4 and 3, each with its number at the left edge.
void paintReferenceLines(Canvas& canvas, const PlotGeometry& geometry);

// The text in the middle of the top edge.
void paintTitle(Canvas& canvas, const PlotGeometry& geometry, const QString& title);
