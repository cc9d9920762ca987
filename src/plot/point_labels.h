#pragma once

#include <QList>
#include <QString>

class Canvas;

// A name for a point of a plot.
struct PointLabel {
    int position = 0;
    double value = 0.0; // -log10 p
    QString text;
};

// Writes the names beside their points, the first ones first. A name that finds no room, with or
// without a line to its point, is left out: no letters lie over others, over another named point,
// or where a plot has its title, its scales and the names of its chromosomes.
void paintPointLabels(Canvas& canvas, const QList<PointLabel>& labels);
