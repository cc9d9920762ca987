#include "plot_geometry.h"

namespace {

constexpr double margin = 0.05; // of the data's range, on each side
constexpr double widthOfScreen = 0.8;
constexpr double heightOfScreen = 0.75;

struct ValueRange {
    double min = 9999999.9;
    double max = -9999999.9;
};

// A value that is not a number passes neither test and leaves the range alone.
ValueRange valueRange(const Points& points) {
    ValueRange range;
    for (qsizetype i = 0; i < points.positions.size(); ++i) {
        const double value = points.values[i];
        if (range.min > value)
            range.min = value;
        if (value > range.max)
            range.max = value;
    }
    return range;
}

void setView(PlotGeometry& geometry, const Points& points) {
    const int first = points.positions.constFirst(), last = points.positions.constLast();
    const ValueRange values = valueRange(points);
    geometry.realMinX = first;
    geometry.realMaxX = last;
    geometry.realMaxY = values.max;

    const int dx = truncated(margin * wrappedDifference(last, first));
    geometry.minX = wrappedDifference(first, dx);
    geometry.maxX = wrappedSum(last, dx);
    const double dy = margin * (values.max - values.min);
    geometry.minY = values.min - dy;
    geometry.maxY = values.max + dy;
}

void setEmptyView(PlotGeometry& geometry) {
    geometry.minX = -1;
    geometry.maxX = 0;
    geometry.minY = 0.0;
    geometry.maxY = 1.0;
}

void setScale(PlotGeometry& geometry) {
    const int plotWidth = geometry.width - (geometry.xMargin + geometry.xMargin2);
    const int plotHeight = geometry.height - 2 * geometry.yMargin;
    geometry.pixPerX =
        static_cast<double>(plotWidth) / wrappedDifference(geometry.maxX, geometry.minX);
    geometry.pixPerY = plotHeight / (geometry.maxY - geometry.minY);
}

} // namespace

int PlotGeometry::positionAt(int x) const {
    return wrappedSum(truncated(x / pixPerX), minX);
}

double PlotGeometry::valueAt(int y) const {
    return minY + (height - yMargin - y) / pixPerY;
}

QSize plotSize(QSize screen) {
    return {truncated(widthOfScreen * screen.width()), truncated(heightOfScreen * screen.height())};
}

PlotGeometry plotGeometry(const Points& points, QSize screen) {
    return geometryOfSize(points, plotSize(screen));
}

PlotGeometry geometryOfSize(const Points& points, QSize size, int magnification) {
    PlotGeometry geometry;
    geometry.width = size.width() * magnification;
    geometry.height = size.height() * magnification;
    geometry.magnification = magnification;
    if (points.positions.isEmpty())
        setEmptyView(geometry);
    else
        setView(geometry, points);
    setScale(geometry);
    return geometry;
}
