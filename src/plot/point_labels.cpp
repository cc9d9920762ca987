#include "point_labels.h"

#include "plot_canvas.h"

#include <QLineF>
#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <utility>

namespace {

// Where names go. Other names and the points that have one are never covered; dots and segments
// only where nothing near is free of them.
class LabelRoom {
public:
    using Test = std::function<bool(const QRectF& area)>;

    LabelRoom(const PlotGeometry& geometry, Test hasMarks)
        : m_unit(geometry.magnification),
          m_inside(QRectF(0, 0, geometry.width, geometry.height)
                       .adjusted(30 * m_unit, 22 * m_unit, -4 * m_unit, -22 * m_unit)),
          m_hasMarks(std::move(hasMarks)) {}

    void addPoint(QPointF point) { m_taken.append(around(point)); }

    struct Place {
        QRectF name;
        std::optional<QLineF> leader; // from the point to a name that is not next to it
    };

    // The place for a name of this size, or nowhere. It is taken then.
    std::optional<Place> take(QPointF point, QSizeF size);

private:
    static QList<QRectF> nextTo(QPointF point, QSizeF size, double gap);
    QList<Place> awayFrom(QPointF point, QSizeF size) const;
    QRectF around(QPointF point) const {
        const double reach = 3.0 * m_unit;
        return {point.x() - reach, point.y() - reach, 2 * reach, 2 * reach};
    }
    bool isTaken(const QRectF& area) const {
        return std::any_of(m_taken.begin(), m_taken.end(),
                           [&](const QRectF& other) { return other.intersects(area); });
    }
    bool isFree(const Place& place) const;

    const int m_unit;
    const QRectF m_inside; // without title, scales and the names of chromosomes
    const Test m_hasMarks;
    QList<QRectF> m_taken; // by names and points
    QList<QLineF> m_leaders;
};

bool crosses(const QLineF& line, const QRectF& area) {
    const std::array<QLineF, 2> diagonals{QLineF(area.topLeft(), area.bottomRight()),
                                          QLineF(area.topRight(), area.bottomLeft())};
    return area.contains(line.p1()) || area.contains(line.p2()) ||
           std::any_of(diagonals.begin(), diagonals.end(), [&](const QLineF& diagonal) {
               return diagonal.intersects(line) == QLineF::BoundedIntersection;
           });
}

bool LabelRoom::isFree(const Place& place) const {
    const auto isMet = [&](const QLineF& leader) {
        return crosses(leader, place.name) ||
               (place.leader && leader.intersects(*place.leader) == QLineF::BoundedIntersection);
    };
    return m_inside.contains(place.name) && !isTaken(place.name) &&
           std::none_of(m_leaders.begin(), m_leaders.end(), isMet) &&
           (!place.leader || std::none_of(m_taken.begin(), m_taken.end(), [&](const QRectF& other) {
               return crosses(*place.leader, other);
           }));
}

QList<QRectF> LabelRoom::nextTo(QPointF point, QSizeF size, double gap) {
    const double width = size.width(), above = -gap - size.height(), beside = -size.height() / 2;
    QList<QRectF> names;
    for (const QPointF& offset :
         {QPointF(-width / 2, above), QPointF(gap, beside), QPointF(-gap - width, beside),
          QPointF(gap, above), QPointF(-gap - width, above)})
        names.append(QRectF(point + offset, size));
    return names;
}

// Farther and farther away: above, then to the sides, which is where room is under the title.
QList<LabelRoom::Place> LabelRoom::awayFrom(QPointF point, QSizeF size) const {
    constexpr int stepsUp = 12, stepsAside = 6;
    const double gap = 4.0 * m_unit, width = size.width(), height = size.height();
    QList<Place> places;
    const auto add = [&](QPointF nameAt, QPointF end) {
        QLineF leader(point, end);
        leader.setP1(leader.pointAt(gap / leader.length())); // beside the dot
        places.append({QRectF(nameAt, size), leader});
    };
    for (int step = 1; step <= stepsUp; ++step) {
        const double rise = gap + step * height;
        for (const double share : {0.5, 0.1, 0.9})
            add(point + QPointF(-share * width, -rise - height), point - QPointF(0, rise));
        if (step > stepsAside)
            continue;
        for (const double steepness : {0.5, 0.0, -0.5})
            for (const double side : {1.0, -1.0}) {
                const QPointF end = point + QPointF(side * rise, -steepness * rise);
                add(end - QPointF(side > 0 ? 0 : width, height / 2), end);
            }
    }
    return places;
}

std::optional<LabelRoom::Place> LabelRoom::take(QPointF point, QSizeF size) {
    QList<Place> places;
    for (const QRectF& name : nextTo(point, size, 4.0 * m_unit))
        places.append({name, {}});
    places += awayFrom(point, size);
    places.removeIf([&](const Place& place) { return !isFree(place); });
    if (places.isEmpty())
        return std::nullopt;
    const auto clear = std::find_if(places.cbegin(), places.cend(),
                                    [&](const Place& place) { return !m_hasMarks(place.name); });
    const Place place = clear != places.cend() ? *clear : places.first();
    m_taken.append(place.name);
    if (place.leader)
        m_leaders.append(*place.leader);
    return place;
}

} // namespace

void paintPointLabels(Canvas& canvas, const QList<PointLabel>& labels) {
    const PlotGeometry& geometry = canvas.geometry();
    const auto pointOf = [&](const PointLabel& label) {
        return QPoint(geometry.xOf(label.position), geometry.yOf(label.value));
    };
    LabelRoom room(geometry, [&](const QRectF& area) { return canvas.hasMarks(area); });
    for (const PointLabel& label : labels)
        room.addPoint(pointOf(label));
    canvas.setColor(QColor(0, 0, 0));
    canvas.setFont(plotFont(10));
    for (const PointLabel& label : labels) {
        const auto place = room.take(pointOf(label), canvas.sizeOf(label.text));
        if (!place)
            continue;
        canvas.drawText(place->name, Qt::AlignCenter, label.text);
        if (place->leader) {
            const QLine line = place->leader->toLine();
            canvas.drawThinLine(line.x1(), line.y1(), line.x2(), line.y2());
        }
    }
}
