#include "box.h"

#include <algorithm>
#include <utility>

namespace {

// Branch-free: copies every point, and advances only past those kept.
template <typename Test>
Points pointsThat(Test pass, Points points) {
    int* const positions = points.positions.data();
    double* const values = points.values.data();
    qsizetype count = 0;
    for (qsizetype i = 0; i < points.positions.size(); ++i) {
        const int position = positions[i];
        const double value = values[i];
        positions[count] = position;
        values[count] = value;
        count += pass(position, value) ? 1 : 0;
    }
    points.positions.resize(count);
    points.values.resize(count);
    return points;
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

Points pointsInside(Points points, const DataBox& box) {
    return pointsThat([&](int position, double value) { return box.contains(position, value); },
                      std::move(points));
}

Points pointsOutside(Points points, const DataBox& box) {
    return pointsThat([&](int position, double value) { return !box.contains(position, value); },
                      std::move(points));
}

std::optional<int> chromosomeAt(int position, const QList<Chromosome>& chromosomes) {
    if (chromosomes.isEmpty())
        return std::nullopt;
    const auto found = std::find_if(chromosomes.begin(), chromosomes.end(), [&](const auto& each) {
        return each.startValue <= position && position <= each.endValue;
    });
    return found == chromosomes.end() ? 0 : static_cast<int>(found - chromosomes.begin());
}
