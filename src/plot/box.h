#pragma once

#include "chromosome.h"
#include "plot_geometry.h"
#include "points.h"

#include <QList>
#include <QPoint>
#include <QSize>
#include <optional>

// The box that a user draws over a plot, and the points that it selects.

// Two corners of a box in pixels; after within(), the top left and the bottom right one.
struct PixelBox {
    QPoint start;
    QPoint end;

    // The box cut at the image's edges, with its corners in order. The far edges are the width and
    // the height themselves, one past the last pixel.
    PixelBox within(QSize image) const;
    bool hasArea() const { return start.x() != end.x() && start.y() != end.y(); }
};

// A rectangle of the data; all its edges belong to it. It holds no value that is not a number.
struct DataBox {
    int minX = 0; // position
    int maxX = 0;
    double minY = 0.0; // -log10 p
    double maxY = 0.0;

    bool contains(int position, double value) const {
        return minX <= position && position <= maxX && minY <= value && value <= maxY;
    }
};

DataBox dataBox(const PixelBox& box, const PlotGeometry& geometry);

// The points inside the box, or those outside it, in their order. Points that are moved in and not
// shared are filtered in place.
Points pointsInside(Points points, const DataBox& box);
Points pointsOutside(Points points, const DataBox& box);

// The place in the list of the first chromosome whose range holds the genome coordinate, both ends
// included. The first of all where none does; nothing where there are no chromosomes.
std::optional<int> chromosomeAt(int position, const QList<Chromosome>& chromosomes);
