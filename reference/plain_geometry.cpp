#include "plain_geometry.h"

#include "plain_numbers.h"

#include <QTextStream>
#include <cmath>

namespace plain {

QSize imageSize(QSize screen) {
    return {truncated(0.8 * screen.width()), truncated(0.75 * screen.height())};
}

PlotGeometry plotGeometry(const Points& points, QSize screen) {
    PlotGeometry view;
    view.realMinX = points.positions.first();
    view.realMaxX = points.positions.last();
    view.minY = 9999999.9;
    view.maxY = -9999999.9;
    for (qsizetype i = 0; i < points.positions.size(); ++i) {
        if (view.minY > points.values[i])
            view.minY = points.values[i];
        if (points.values[i] > view.maxY)
            view.maxY = points.values[i];
    }
    view.realMaxY = view.maxY;
    const int dx = truncated(0.05 * difference(view.realMaxX, view.realMinX));
    view.minX = difference(view.realMinX, dx);
    view.maxX = wrapped(std::int64_t(view.realMaxX) + dx);
    const double dy = 0.05 * (view.maxY - view.minY);
    view.minY -= dy;
    view.maxY += dy;
    view.width = imageSize(screen).width();
    view.height = imageSize(screen).height();
    view.xMargin = view.xMargin2 = view.yMargin = 0;
    view.pixPerX = double(view.width) / double(difference(view.maxX, view.minX));
    view.pixPerY = double(view.height) / (view.maxY - view.minY);
    return view;
}

QPoint pixelOf(const PlotGeometry& geometry, int position, double value) {
    const int fromLeft = difference(position, geometry.minX);
    return {std::isinf(geometry.pixPerX) ? geometry.width / 2
                                         : truncated(geometry.pixPerX * fromLeft),
            std::isinf(geometry.pixPerY) ? geometry.height / 2 : rowOfLevel(geometry, value)};
}

int rowOfLevel(const PlotGeometry& geometry, double level) {
    const int up = truncated(geometry.pixPerY * (level - geometry.minY));
    return wrapped(std::int64_t(geometry.height) - geometry.yMargin - up);
}

QString toText(const PlotGeometry& geometry) {
    QString text;
    QTextStream stream(&text);
    stream.setRealNumberPrecision(17);
    stream << geometry.width << " x " << geometry.height << " pixels, margins " << geometry.xMargin
           << ' ' << geometry.xMargin2 << ' ' << geometry.yMargin << ", x " << geometry.minX
           << " to " << geometry.maxX << ", y " << geometry.minY << " to " << geometry.maxY
           << ", data x " << geometry.realMinX << " to " << geometry.realMaxX << ", y to "
           << geometry.realMaxY << ", pixels per unit " << geometry.pixPerX << ' '
           << geometry.pixPerY;
    return text;
}

} // namespace plain
