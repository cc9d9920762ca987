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

// Writes the names beside their points, the first ones first, with a line to the point where only
// farther away is room. No letters lie over others, over another named point, or where a plot has
// its title, its scales and the names of its chromosomes: a name without such a place is left out.
// They lie over dots or segments only where no place near is free of these.
void paintPointLabels(Canvas& canvas, const QList<PointLabel>& labels);
