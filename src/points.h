#pragma once

#include <QList>
#include <algorithm>
#include <utility>

// Markers as the plots show them: entry i of both lists is one point. Lists are shared on copy, so
// handing points from the shown set to the working set and back costs nothing until one is changed.
struct Points {
    QList<int> positions; // base pairs, or genome coordinates (100 base pairs) in the genome view
    QList<double> values; // -log10 p

    bool operator==(const Points&) const = default;
};

// Collects points one at a time, at a fraction of what it costs to append to two shared lists.
// Takes memory for an eighth more points than there are at most.
class PointCollector {
public:
    qsizetype size() const { return m_size; }

    void append(int position, double value) {
        if (m_size == m_room)
            makeRoom();
        m_positions[m_size] = position;
        m_values[m_size] = value;
        ++m_size;
    }

    // The points collected. Called once, after the last append().
    Points take() {
        m_points.positions.resize(m_size);
        m_points.values.resize(m_size);
        return std::move(m_points);
    }

private:
    void makeRoom() {
        constexpr qsizetype least = 1024;
        m_room = m_size + std::max(least, m_size / 8);
        m_points.positions.resize(m_room);
        m_points.values.resize(m_room);
        m_positions = m_points.positions.data();
        m_values = m_points.values.data();
    }

    Points m_points; // both lists have room behind the points collected
    int* m_positions = nullptr;
    double* m_values = nullptr;
    qsizetype m_size = 0;
    qsizetype m_room = 0;
};
