#include "point_labels.h"

#include "plot_canvas.h"

#include <QFontMetricsF>
#include <algorithm>

namespace {

class LabelRoom {
public:
    explicit LabelRoom(const PlotGeometry& geometry)
        : m_unit(geometry.magnification),
          m_inside(QRectF(0, 0, geometry.width, geometry.height)
                       .adjusted(30 * m_unit, 22 * m_unit, -4 * m_unit, -22 * m_unit)) {}

    void addPoint(QPointF point) { m_taken.append(around(point)); }

    // Where a name of this size goes, or nowhere.
    struct Place {
        QRectF name;
        bool isRaised = false; // so far that it takes a line to its point
    };
    std::optional<Place> take(QPointF point, QSizeF size);

private:
    QRectF around(QPointF point) const {
        const double reach = 3.0 * m_unit;
        return {point.x() - reach, point.y() - reach, 2 * reach, 2 * reach};
    }
    bool isFree(const QRectF& area) const {
        return m_inside.contains(area) &&
               std::none_of(m_taken.begin(), m_taken.end(),
                            [&](const QRectF& other) { return other.intersects(area); });
    }

    const int m_unit;
    const QRectF m_inside; // without title, scales and the names of chromosomes
    QList<QRectF> m_taken;
};

std::optional<LabelRoom::Place> LabelRoom::take(QPointF point, QSizeF size) {
    constexpr int mostLines = 12;
    const double gap = 4.0 * m_unit, width = size.width(), height = size.height();
    const double above = -gap - height, beside = -height / 2;
    for (const QPointF& offset :
         {QPointF(-width / 2, above), QPointF(gap, beside), QPointF(-gap - width, beside),
          QPointF(gap, above), QPointF(-gap - width, above)}) {
        const QRectF name(point + offset, size);
        if (isFree(name)) {
            m_taken.append(name);
            return Place{name, false};
        }
    }
    for (int line = 1; line <= mostLines; ++line)
        for (const double share : {0.5, 0.1, 0.9}) {
            const QRectF name(point + QPointF(-share * width, above - line * height), size);
            const QRectF leader(QPointF(point.x() - m_unit, name.bottom()),
                                QPointF(point.x() + m_unit, point.y() - gap));
            if (isFree(name) && isFree(leader)) {
                m_taken += {name, leader};
                return Place{name, true};
            }
        }
    return std::nullopt;
}

} // namespace

void paintPointLabels(Canvas& canvas, const QList<PointLabel>& labels) {
    const PlotGeometry& geometry = canvas.geometry();
    const auto pointOf = [&](const PointLabel& label) {
        return QPoint(geometry.xOf(label.position), geometry.yOf(label.value));
    };
    LabelRoom room(geometry);
    for (const PointLabel& label : labels)
        room.addPoint(pointOf(label));
    canvas.setColor(QColor(0, 0, 0));
    canvas.setFont(plotFont(10));
    for (const PointLabel& label : labels) {
        const QPoint point = pointOf(label);
        const auto place = room.take(point, canvas.sizeOf(label.text));
        if (!place)
            continue;
        canvas.drawText(place->name, Qt::AlignCenter, label.text);
        if (place->isRaised)
            canvas.drawThinLine(point.x(), point.y() - 4 * geometry.magnification, point.x(),
                                static_cast<int>(place->name.bottom()));
    }
}
