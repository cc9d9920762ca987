#include "sight.h"

#include <QColor>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <algorithm>
#include <cstdlib>

namespace {

bool haveSameHue(const QColor& a, const QColor& b) {
    constexpr int tolerance = 6, faintest = 12; // grey has no hue to speak of
    const int difference = std::abs(a.hsvHue() - b.hsvHue());
    return std::min(a.hsvSaturation(), b.hsvSaturation()) >= faintest &&
           std::min(difference, 360 - difference) <= tolerance;
}

// From the first to the last pixel of that hue in a column; an empty rectangle where there are too
// few of them.
QRect columnOf(const QImage& screen, int x, int belowRow, const QColor& color) {
    constexpr int buttonPixels = 8; // letters leave at least so many
    int first = -1, last = -1, count = 0;
    for (int y = belowRow + 1; y < screen.height(); ++y) {
        if (!haveSameHue(screen.pixelColor(x, y), color))
            continue;
        first = first < 0 ? y : first;
        last = y;
        ++count;
    }
    return count < buttonPixels ? QRect() : QRect(QPoint(x, first), QPoint(x, last));
}

} // namespace

namespace sight {

QImage screen() {
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage().convertToFormat(
        QImage::Format_RGB32);
}

QPoint plotCorner(const QImage& screen, int plotWidth) {
    for (int y = 0; y < screen.height(); ++y) {
        int run = 0;
        for (int x = 0; x < screen.width(); ++x) {
            run = screen.pixelColor(x, y) == QColor(Qt::white) ? run + 1 : 0;
            if (run == plotWidth)
                return {x - plotWidth + 1, y};
        }
    }
    return {-1, -1};
}

QList<QRect> buttons(const QImage& screen, int belowRow, const QColor& color) {
    QList<QRect> buttons;
    for (int x = 0; x < screen.width(); ++x) {
        const QRect column = columnOf(screen, x, belowRow, color);
        if (column.isEmpty())
            continue;
        const bool isNext = !buttons.isEmpty() && x - buttons.last().right() <= 2;
        if (isNext)
            buttons.last() |= column;
        else
            buttons.append(column);
    }
    return buttons;
}

} // namespace sight
