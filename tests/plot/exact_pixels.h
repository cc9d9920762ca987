#pragma once

#include "plain_painter.h"
#include "plot_painter.h"

#include <QImage>
#include <QRegion>
#include <QTest>
#include <initializer_list>
#include <utility>

// Helpers for tests of exact pixels. These tests check both painters: comparisons on random data
// are only worth as much as the reference is right.

inline constexpr QRgb red = 0xffff3232, blue = 0xff3232ff, grey = 0xff323232, white = 0xffffffff;

struct Painter {
    QImage (*genome)(const PlotGeometry&, PlotPoints, const GenomePlot&);
    QImage (*chromosome)(const PlotGeometry&, PlotPoints, const ChromosomePlot&);
};

inline constexpr Painter painters[] = {{paintGenome, paintChromosome},
                                       {plain::paintGenome, plain::paintChromosome}};

// One pixel per unit: position p lies in column p and value v in row 100 - v.
inline PlotGeometry unitGeometry() {
    PlotGeometry geometry;
    geometry.width = 200;
    geometry.height = 100;
    geometry.minX = 0;
    geometry.maxX = 200;
    geometry.maxY = 100.0;
    geometry.pixPerX = 1.0;
    geometry.pixPerY = 1.0;
    return geometry;
}

inline Chromosome chromosomeFrom(int start, const QString& label) {
    return {.label = label, .startValue = start};
}

// Chromosomes that start there; without labels of their own, ones that differ and are invisible.
inline GenomePlot genomeOf(const QList<int>& starts, const QStringList& labels = {}) {
    GenomePlot plot;
    for (int k = 0; k < starts.size(); ++k)
        plot.chromosomes << chromosomeFrom(starts[k], labels.value(k, QString(k, u' ')));
    return plot;
}

inline PlotPoints pointsOf(const Points& points) {
    return {points.positions, points.values};
}

// The pixels of a colour, by default between the title and the texts at the bottom.
inline QRegion pixels(const QImage& image, QRgb color, int top = 20, int bottom = 80) {
    QRegion region;
    for (int y = top; y < bottom; ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == color)
                region += QRect(x, y, 1, 1);
    return region;
}

// Where the two regions differ. Compared with an empty region, it shows the place of a failure.
inline QRegion differing(const QRegion& region, const QRegion& expected) {
    return region.xored(expected);
}

// Between the title and the texts at the bottom, the image has these colours, and is white
// elsewhere.
inline void checkColors(const QImage& image,
                        std::initializer_list<std::pair<QRgb, QRegion>> expected) {
    QRegion rest(0, 20, image.width(), 60);
    for (const auto& [color, region] : expected) {
        QCOMPARE(differing(pixels(image, color), region & rest), QRegion());
        rest -= region;
    }
    QCOMPARE(differing(pixels(image, white), rest), QRegion());
}

// All but the white pixels, since the edges of text have any shade.
inline QRegion ink(const QImage& image, const QRect& area) {
    return QRegion(area) - pixels(image, white, area.top(), area.bottom() + 1);
}

inline QRegion rectangle(int left, int top, int right, int bottom) {
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

// A dot has the width of its pen, and reaches one pixel further left and up than right and down.
inline QRegion dot(int x, int y, int penWidth) {
    const int half = penWidth / 2;
    return rectangle(x - half, y - half, x + half - 1, y + half - 1);
}

// Of several points in row 50.
inline QRegion dots(std::initializer_list<int> columns, int penWidth) {
    QRegion region;
    for (const int x : columns)
        region += dot(x, 50, penWidth);
    return region;
}
