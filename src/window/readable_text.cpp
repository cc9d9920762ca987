#include "readable_text.h"

#include <QPalette>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace {

constexpr double leastReadable = 4.5;
constexpr double leastVisible = 1.1;

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    const double red = linear(static_cast<double>(color.redF()));
    const double green = linear(static_cast<double>(color.greenF()));
    const double blue = linear(static_cast<double>(color.blueF()));
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
}

} // namespace

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readableText(const QColor& themed, const QColor& background) {
    if (contrast(themed, background) >= leastReadable)
        return themed;
    return contrast(Qt::black, background) >= contrast(Qt::white, background) ? Qt::black
                                                                              : Qt::white;
}

// Styles draw frames in shades of the background, and black has no darker shade.
void ensureVisibleFrame(QWidget& widget) {
    QPalette palette = widget.palette();
    const QColor background = palette.color(QPalette::Window);
    if (contrast(palette.color(QPalette::Base), background) >= leastVisible ||
        contrast(background.darker(), background) >= leastVisible)
        return;
    for (const QPalette::ColorRole shade : {QPalette::Window, QPalette::Light, QPalette::Midlight,
                                            QPalette::Mid, QPalette::Dark, QPalette::Shadow})
        palette.setColor(shade, palette.color(QPalette::WindowText));
    widget.setPalette(palette);
}
