#include "quantile_plot.h"

#include "plot_canvas.h"

#include <QPolygonF>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr DotLook quantileDot{5, Qt::RoundCap};
constexpr QRgb dotColor = qRgb(50, 50, 255);
constexpr QColor bandColor(222, 222, 222);

// The area inside the axes, in pixels, and what it shows: both scales start at 0.
class QuantileArea {
public:
    QuantileArea(const PlotGeometry& geometry, const QuantilePlot& plot)
        : m_area(QRectF(0, 0, geometry.width, geometry.height)
                     .adjusted(left * geometry.magnification, top * geometry.magnification,
                               -right * geometry.magnification, -bottom * geometry.magnification)),
          m_maxX(expectedNegLog10(1, plot.observed.size()) * headroom),
          m_maxY(std::max(plot.observed.front(), plot.band.front().high) * headroom) {}

    const QRectF& rectangle() const { return m_area; }
    double maxX() const { return m_maxX; }
    double maxY() const { return m_maxY; }
    double x(double expected) const { return m_area.left() + expected / m_maxX * m_area.width(); }
    double y(double observed) const {
        return m_area.bottom() - observed / m_maxY * m_area.height();
    }

private:
    static constexpr int left = 70, right = 20, top = 40, bottom = 60; // pixels
    static constexpr double headroom = 1.04;

    QRectF m_area;
    double m_maxX;
    double m_maxY;
};

// The distance of ticks on a scale: 1, 2 or 5 times a power of ten, so that there are a few.
double tickStep(double max) {
    constexpr double mostTicks = 10.0;
    const double power = std::pow(10.0, std::floor(std::log10(max / mostTicks)));
    for (const double step : {1.0, 2.0, 5.0})
        if (max / (step * power) <= mostTicks)
            return step * power;
    return 10.0 * power;
}

void paintBand(QPainter& painter, const QuantileArea& area, const QuantilePlot& plot) {
    QPolygonF outline;
    for (const QuantileBand& band : plot.band)
        outline.append({area.x(band.expected), area.y(band.high)});
    outline.append({area.x(0), area.y(0)});
    std::for_each(plot.band.rbegin(), plot.band.rend(), [&](const QuantileBand& band) {
        outline.append({area.x(band.expected), area.y(band.low)});
    });
    painter.setPen(Qt::NoPen);
    painter.setBrush(bandColor);
    painter.drawPolygon(outline);
    painter.setBrush(Qt::NoBrush);
}

void paintDiagonal(QPainter& painter, const QuantileArea& area, const QPen& pen) {
    const double end = std::min(area.maxX(), area.maxY());
    painter.setPen(pen);
    painter.drawLine(QPointF(area.x(0), area.y(0)), QPointF(area.x(end), area.y(end)));
}

void paintScaleOfX(QPainter& painter, const QuantileArea& area, int unit) {
    const double bottom = area.rectangle().bottom(), step = tickStep(area.maxX());
    for (int i = 0; i * step <= area.maxX(); ++i) {
        const double x = area.x(i * step);
        painter.drawLine(QPointF(x, bottom), QPointF(x, bottom + 5 * unit));
        painter.drawText(QRectF(x - 50 * unit, bottom + 6 * unit, 100 * unit, 20 * unit),
                         Qt::AlignHCenter | Qt::AlignTop, QString::number(i * step));
    }
}

void paintScaleOfY(QPainter& painter, const QuantileArea& area, int unit) {
    const double left = area.rectangle().left(), step = tickStep(area.maxY());
    for (int i = 0; i * step <= area.maxY(); ++i) {
        const double y = area.y(i * step);
        painter.drawLine(QPointF(left, y), QPointF(left - 5 * unit, y));
        painter.drawText(QRectF(0, y - 10 * unit, left - 8 * unit, 20 * unit),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(i * step));
    }
}

void paintWords(QPainter& painter, const QuantileArea& area, const PlotGeometry& geometry,
                const QString& title) {
    const int unit = geometry.magnification, height = 22 * unit;
    const QRectF& inside = area.rectangle();
    painter.setFont(plotFont(12));
    painter.drawText(QRectF(0, 8 * unit, geometry.width, height), Qt::AlignCenter, title);
    painter.drawText(
        QRectF(inside.left(), geometry.height - 8 * unit - height, inside.width(), height),
        Qt::AlignCenter, QStringLiteral("Expected -log10 p"));
    painter.save();
    painter.translate(6 * unit, inside.bottom());
    painter.rotate(-90);
    painter.drawText(QRectF(0, 0, inside.height(), height), Qt::AlignCenter,
                     QStringLiteral("Observed -log10 p"));
    painter.restore();
}

void paintAxes(QPainter& painter, const QuantileArea& area, const PlotGeometry& geometry,
               const QString& title) {
    const QRectF& inside = area.rectangle();
    painter.setPen(QPen(Qt::black, geometry.magnification));
    painter.drawLine(inside.bottomLeft(), inside.bottomRight());
    painter.drawLine(inside.bottomLeft(), inside.topLeft());
    painter.setFont(plotFont(10));
    paintScaleOfX(painter, area, geometry.magnification);
    paintScaleOfY(painter, area, geometry.magnification);
    paintWords(painter, area, geometry, title);
}

// Of markers in one place, which most are, the first.
void paintDots(Canvas& canvas, const QuantileArea& area, std::span<const double> observed) {
    std::array<int, DotStamp::mostAtOnce> x, y;
    size_t count = 0;
    QPoint last(-1, -1);
    for (size_t i = 0; i < observed.size(); ++i) {
        const QPoint dot(truncated(area.x(expectedNegLog10(i + 1, observed.size()))),
                         truncated(area.y(observed[i])));
        if (std::exchange(last, dot) == dot)
            continue;
        x[count] = dot.x();
        y[count] = dot.y();
        if (++count == x.size()) {
            canvas.putDots(x, y, dotColor);
            count = 0;
        }
    }
    canvas.putDots({x.data(), count}, {y.data(), count}, dotColor);
}

void paint(Canvas& canvas, const QuantilePlot& plot) {
    const PlotGeometry& geometry = canvas.geometry();
    const QuantileArea area(geometry, plot);
    QPainter& painter = canvas.painter();
    painter.setRenderHint(QPainter::Antialiasing);
    paintBand(painter, area, plot);
    paintDiagonal(painter, area, QPen(QColor(140, 140, 140), 1.5 * geometry.magnification));
    paintAxes(painter, area, geometry, plot.title);
    painter.setRenderHint(QPainter::Antialiasing, false);
    canvas.startMarks();
    paintDots(canvas, area, plot.observed);
}

} // namespace

double expectedNegLog10(size_t rank, size_t count) {
    return -std::log10(static_cast<double>(rank) / (static_cast<double>(count) + 1.0));
}

QImage paintQuantiles(const PlotGeometry& geometry, const QuantilePlot& plot) {
    return paintedImage(geometry, quantileDot, [&](Canvas& canvas) { paint(canvas, plot); });
}

bool printQuantiles(QPaintDevice& page, const PlotGeometry& geometry, const QuantilePlot& plot) {
    return paintPage(page, geometry, quantileDot, [&](Canvas& canvas) { paint(canvas, plot); });
}
