#pragma once

#include "plain_painter.h"
#include "plot_painter.h"

#include <QImage>
#include <QRegion>

// What the tests of exact pixels look at, and with. They hold both painters to the same: the random
// comparison rests on the plain one's being right.

inline constexpr QRgb red = 0xffff3232, blue = 0xff3232ff, grey = 0xff323232, white = 0xffffffff;

struct Painter {
    QImage (*genome)(const PlotGeometry&, PlotPoints, const GenomePlot&);
    QImage (*chromosome)(const PlotGeometry&, PlotPoints, const ChromosomePlot&);
};

inline constexpr Painter painters[] = {{paintGenome, paintChromosome},
                                       {plain::paintGenome, plain::paintChromosome}};

// One pixel per unit, so that position p lies in column p and value v at 100 - v.
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

inline GenomePlot genomeOf(const QVector<int>& startValue) {
    GenomePlot plot;
    plot.startValue = startValue;
    for (int k = 0; k < startValue.size(); ++k) {
        plot.tags << QString(k, u' '); // blanks: labels that differ and show nothing
        plot.colorValue << (k % 2 == 0 ? 255 : 50);
    }
    return plot;
}

inline PlotPoints pointsOf(const Points& points) {
    return {points.positions, points.values};
}

// The pixels of a colour between the title's band and the labels at the bottom.
inline QRegion pixels(const QImage& image, QRgb color, int top = 20, int bottom = 80) {
    QRegion region;
    for (int y = top; y < bottom; ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == color)
                region += QRect(x, y, 1, 1);
    return region;
}

// Where the two regions differ; an empty region where nowhere.
inline QRegion differing(const QRegion& region, const QRegion& expected) {
    return region.xored(expected);
}

// What text leaves on white: its edges have any shade.
inline QRegion ink(const QImage& image, const QRect& area) {
    QRegion region = area;
    return region - pixels(image, white, area.top(), area.bottom() + 1);
}

inline bool isReddish(const QImage& image, const QRegion& region) {
    int redness = 0;
    for (const QRect& rect : region)
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            for (int x = rect.left(); x <= rect.right(); ++x)
                redness += qRed(image.pixel(x, y)) - qGreen(image.pixel(x, y));
    return redness > 50;
}

inline QRegion rectangle(int left, int top, int right, int bottom) {
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

// Of two equally wide pens, how far a dot reaches: 2 pixels left and up of its place, or 1.
inline QRegion dot(int x, int y, int penWidth) {
    const int half = penWidth / 2;
    return rectangle(x - half, y - half, x + half - 1, y + half - 1);
}
