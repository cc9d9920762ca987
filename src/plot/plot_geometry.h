#pragma once

#include "int_arithmetic.h"
#include "points.h"

#include <QSize>
#include <cmath>

// What a plot shows and how large: the view's range and scale, and the one rule between points and
// pixels in both directions. Pixel (0, 0) is the image's top left corner; y grows downward, so
// larger values lie higher. Positions are base pairs or genome coordinates, values -log10 p.
struct PlotGeometry {
    int width = 0; // of the image, in pixels
    int height = 0;
    int xMargin = 0; // of the plot area in the image, in pixels: none
    int xMargin2 = 0;
    int yMargin = 0;

    int minX = -1; // the view: the data's range and 5 % more on each side
    int maxX = 0;
    double minY = 0.0;
    double maxY = 0.0;
    int realMinX = 0; // the data's range: first and last position, largest value
    int realMaxX = 0;
    double realMaxY = 0.0;

    // Infinite where all points share one position, or one value. Their place on that axis is then
    // its middle; the way back from a pixel leads to that one position or value from everywhere.
    double pixPerX = 0.0;
    double pixPerY = 0.0;

    // How many pixels stand in a row for one on a screen of 96 dots per inch: of dots, lines and
    // letters. The numbers above count the image's own pixels.
    int magnification = 1;

    int xOf(int position) const {
        return std::isinf(pixPerX) ? width / 2
                                   : truncated(pixPerX * wrappedDifference(position, minX));
    }
    // What is not a number lies far above the image.
    int yOf(double value) const {
        return std::isinf(pixPerY) && !std::isnan(value) ? height / 2 : yOfLevel(value);
    }
    // Where the line of a value level lies: as yOf, but on an infinite scale outside of the image.
    int yOfLevel(double level) const {
        return wrappedDifference(height - yMargin, truncated(pixPerY * (level - minY)));
    }
    int positionAt(int x) const;
    double valueAt(int y) const;
};

// The geometry that shows `points` on a screen of the given size. The first position is taken for
// the smallest and the last for the largest: data in no order gets the view that follows from that.
// No points at all get a finite view with `minX` -1.
PlotGeometry plotGeometry(const Points& points, QSize screen);

// The size of the plot on a screen, in pixels.
QSize plotSize(QSize screen);

// The same for a plot of the given size on a screen, with so many times the pixels each way.
PlotGeometry geometryOfSize(const Points& points, QSize size, int magnification = 1);
