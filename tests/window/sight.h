#pragma once

#include <QImage>
#include <QList>
#include <QPoint>
#include <QRect>

// Finds its way on the screen as a person does: by what is seen there.
namespace sight {

QImage screen();

// The top left corner of the plot: the first row of so many white pixels. (-1, -1) without one.
QPoint plotCorner(const QImage& screen, int plotWidth);

// The buttons of one colour below a row, from left to right. The style shades a colour, which keeps
// its hue.
QList<QRect> buttons(const QImage& screen, int belowRow, const QColor& color);

} // namespace sight
