#pragma once

#include "plot_geometry.h"
#include "points.h"

#include <QPoint>
#include <QSize>
#include <QString>

// The reference for the plots' geometry: the view's range and scale, and the way from points to
// pixels, one rule after the other. Of PlotGeometry it uses the numbers alone.
namespace plain {

QSize imageSize(QSize screen);

// There must be at least one point, and a value for each.
PlotGeometry plotGeometry(const Points& points, QSize screen);

// The pixel of a point; the middle of an axis whose scale is infinite.
QPoint pixelOf(const PlotGeometry& geometry, int position, double value);

// The row of a reference line.
int rowOfLevel(const PlotGeometry& geometry, double level);

// All numbers, exact to the last bit, so that equal texts mean equal geometries.
QString toText(const PlotGeometry& geometry);

} // namespace plain
