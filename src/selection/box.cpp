#include "selection/box.h"

#include <algorithm>
#include <utility>

namespace {

// Counts first: to look at a million points twice takes less time than to move those found from one
// memory to a larger one again and again.
template <typename Test>
Points pointsThat(Test pass, const Points& points) {
    qsizetype count = 0;
    for (qsizetype i = 0; i < points.positions.size(); ++i)
        count += pass(points.positions[i], points.values[i]) ? 1 : 0;
    Points passed{QList<int>(count), QList<double>(count)};
    int* position = passed.positions.data();
    double* value = passed.values.data();
    for (qsizetype i = 0; i < points.positions.size(); ++i) {
        if (!pass(points.positions[i], points.values[i]))
            continue;
        *position++ = points.positions[i];
        *value++ = points.values[i];
    }
    return passed;
}

} // namespace

PixelBox PixelBox::within(QSize image) const {
    const auto cut = [](int coordinate, int edge) {
        return std::min(std::max(coordinate, 0), edge);
    };
    const auto [left, right] =
        std::minmax({cut(start.x(), image.width()), cut(end.x(), image.width())});
    const auto [top, bottom] =
        std::minmax({cut(start.y(), image.height()), cut(end.y(), image.height())});
    return {{left, top}, {right, bottom}};
}

DataBox dataBox(const PixelBox& box, const PlotGeometry& geometry) {
    DataBox data{geometry.positionAt(box.start.x()), geometry.positionAt(box.end.x()),
                 geometry.valueAt(box.start.y()), geometry.valueAt(box.end.y())};
    if (data.minX > data.maxX)
        std::swap(data.minX, data.maxX);
    if (data.minY > data.maxY)
        std::swap(data.minY, data.maxY);
    return data;
}

Points pointsInside(const Points& points, const DataBox& box) {
    return pointsThat([&](int position, double value) { return box.contains(position, value); },
                      points);
}

Points pointsOutside(const Points& points, const DataBox& box) {
    return pointsThat([&](int position, double value) { return !box.contains(position, value); },
                      points);
}

std::optional<int> chromosomeAt(int position, const QVector<int>& startValue,
                                const QVector<int>& endValue) {
    if (startValue.isEmpty())
        return std::nullopt;
    for (int i = 0; i < startValue.size(); ++i)
        if (startValue[i] <= position && position <= endValue[i])
            return i;
    return 0;
}
