#include "point_collector.h"

#include <algorithm>
#include <cmath>
#include <utility>

// Room is made in steps that fit the nearest cache. The lists grow geometrically by themselves.
void PointCollector::makeRoom() {
    constexpr qsizetype step = 1024;
    takeLogarithms();
    m_room = m_size + step;
    m_points.positions.resize(m_room);
    m_points.values.resize(m_room);
    m_positions = m_points.positions.data();
    m_values = m_points.values.data();
}

void PointCollector::takeLogarithms() {
    if (!m_areLogarithms)
        return;
    std::for_each(m_values + m_logarithms, m_values + m_size,
                  [](double& value) { value = -std::log10(value); });
    m_logarithms = m_size;
}

Points PointCollector::take() {
    takeLogarithms();
    m_points.positions.resize(m_size);
    m_points.values.resize(m_size);
    return std::move(m_points);
}
