// Points to pixels against the reference; and for any data, what must hold of the way back and of
// boxes drawn on a plot. Input: screen, box, points.

#include "box.h"
#include "chromosome_walk.h"
#include "finding.h"
#include "plain_geometry.h"
#include "plain_painter.h"
#include "plot_geometry.h"
#include "points_input.h"

#include <cmath>

namespace {

// True if the view runs from left to right and no sum of its positions can overflow.
bool isOrdinary(const PlotGeometry& geometry) {
    constexpr int farthest = 900'000'000;
    return -farthest < geometry.realMinX && geometry.realMinX < geometry.realMaxX &&
           geometry.realMaxX < farthest && geometry.width > 0;
}

void checkPixels(const PlotGeometry& geometry, const Points& points) {
    for (qsizetype i = 0; i < points.positions.size(); ++i) {
        const int position = points.positions[i];
        const double value = points.values[i];
        const QPoint expected = plain::pixelOf(geometry, position, value);
        mustHold(geometry.xOf(position) == expected.x(), "column");
        mustHold(geometry.yOf(value) == expected.y() || std::isnan(value), "row");
    }
}

void checkWayBack(const PlotGeometry& geometry, const Points& points) {
    for (const int position : points.positions) {
        if (position < geometry.realMinX || position > geometry.realMaxX)
            continue;
        const int x = geometry.xOf(position);
        mustHold(x >= 0 && x <= geometry.width, "column in the image", {}, QString::number(x));
        const double short_ = position - geometry.positionAt(x);
        mustHold(short_ >= 0.0 && short_ <= 1.0 + 1.0 / geometry.pixPerX, "position of a column",
                 QString::number(position), QString::number(geometry.positionAt(x)));
    }
}

void checkBox(const PlotGeometry& geometry, const PixelBox& drawn, const Points& points) {
    const QSize image(geometry.width, geometry.height);
    const PixelBox box = drawn.within(image);
    mustHold(box.start.x() <= box.end.x() && box.start.y() <= box.end.y(), "corners in order");
    mustHold(box.start.x() >= 0 && box.end.x() <= image.width() && box.start.y() >= 0 &&
                 box.end.y() <= image.height(),
             "box in the image");
    const DataBox data = dataBox(box, geometry);
    mustHold(!(data.minX > data.maxX) && !(data.minY > data.maxY), "data box in order");
    const Points inside = pointsInside(points, data);
    const Points outside = pointsOutside(points, data);
    mustHold(inside.positions.size() == inside.values.size() &&
                 outside.positions.size() == outside.values.size(),
             "aligned lists");
    mustHold(inside.positions.size() + outside.positions.size() == points.positions.size(),
             "no point lost");
    for (qsizetype i = 0; i < inside.positions.size(); ++i)
        mustHold(inside.positions[i] >= data.minX && inside.positions[i] <= data.maxX &&
                     inside.values[i] >= data.minY && inside.values[i] <= data.maxY,
                 "inside the box");
}

void checkChromosomes(const QList<int>& starts) {
    QList<Chromosome> chromosomes;
    for (const int start : starts)
        chromosomes.append({.startValue = start, .endValue = start / 2 + 1000});
    ChromosomeWalk walk(chromosomes);
    int red = 255;
    for (const int position : starts) {
        const int picked = chromosomeAt(position, chromosomes).value_or(-1);
        mustHold(picked >= 0 && picked < starts.size(), "chromosome of the index");
        mustHold(picked == 0 ||
                     (starts[picked] <= position && position <= chromosomes[picked].endValue),
                 "chromosome around the position");
        const qsizetype k = plain::chromosomeOf(position, chromosomes);
        red = k == 0 ? red : k % 2 == 0 ? 255 : 50;
        mustHold(walk.step(position) == k && walk.red() == red, "walk along the chromosomes");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const QSize screen(input.number<std::uint16_t>() % 7681, input.number<std::uint16_t>() % 4321);
    const auto corner = [&] {
        return QPoint(input.number<std::int16_t>(), input.number<std::int16_t>());
    };
    const PixelBox box{corner(), corner()};
    const Points points = pointsFrom(input, 1000);
    const PlotGeometry geometry = plotGeometry(points, screen);
    mustHold(QSize(geometry.width, geometry.height) == plain::imageSize(screen), "image's size");
    checkPixels(geometry, points);
    if (isOrdinary(geometry))
        checkWayBack(geometry, points);
    checkBox(geometry, box, points);
    if (points.positions.isEmpty()) {
        mustHold(geometry.minX == -1, "view without points");
        return 0;
    }
    const QString expected = plain::toText(plain::plotGeometry(points, screen));
    mustHold(plain::toText(geometry) == expected, "view", expected, plain::toText(geometry));
    checkChromosomes(points.positions);
    return 0;
}
