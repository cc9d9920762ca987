#pragma once

#include "points.h"

// Collects markers one at a time and makes points of them.
//
// Logarithms are computed in batches so that successive calls overlap. The room that the lists keep
// for more is mostly never touched, so it costs addresses rather than memory.
class PointCollector {
public:
    enum class Values { NegLog10, P };

    explicit PointCollector(Values values = Values::NegLog10)
        : m_areLogarithms(values == Values::NegLog10) {}

    qsizetype size() const { return m_size; }

    void append(int position, double pValue) {
        if (m_size == m_room)
            makeRoom();
        m_positions[m_size] = position;
        m_values[m_size] = pValue;
        ++m_size;
    }

    // The points collected, at -log10 p: not a number for a negative p-value, negative for one
    // above 1. At p itself where that is asked for. Called once, after the last append().
    Points take();

private:
    void makeRoom();
    void takeLogarithms();

    const bool m_areLogarithms;
    Points m_points; // both lists have room after the points collected
    int* m_positions = nullptr;
    double* m_values = nullptr; // -log10 p, but p where no logarithm was taken yet
    qsizetype m_logarithms = 0;
    qsizetype m_size = 0;
    qsizetype m_room = 0;
};
