#pragma once

#include "state.h"

#include <QImage>
#include <QList>
#include <QSize>
#include <QString>

// The plain second opinion on what the window has to show: ranges, scale and pictures computed anew
// from the points, with the toolkit's painter on the same platform, so that the comparison holds
// with whatever fonts there are.
struct ExpectedView {
    // On the screen of 800 x 800 that there is without a screen.
    static constexpr QSize plotSize{640, 600};

    ExpectedView(QList<int> positions, QList<double> values, QSize size = plotSize);

    int x(int position) const;
    int y(double value) const;

    // The differences to what the program computed; empty when there are none.
    QStringList differencesTo(const State& state) const;

    QList<int> positions;
    QList<double> values;
    int minX, maxX, realMinX, realMaxX;
    double minY, maxY, realMaxY;
    int width, height;
    double pixPerX, pixPerY;
};

struct ChromosomeLook {
    bool stripes = true;
    bool joined = false;
    int from = 0; // highlight
    int to = 0;
};

struct GenomeLook {
    QString title; // the file's name
    QStringList tags;
    QList<int> startValues;
    QList<int> colors;
    bool stripes = true;
};

QImage expectedChromosomePlot(const ExpectedView& view, const ChromosomeLook& look = {});
QImage expectedGenomePlot(const ExpectedView& view, const GenomeLook& look);
QString picture(const QImage& image); // as State names one
int pixelsOf(const QImage& image, const QColor& color);
