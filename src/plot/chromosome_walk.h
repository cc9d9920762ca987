#pragma once

#include <QVector>
#include <QtGlobal>

// Tells for one genome coordinate after the other which chromosome it lies on and its points'
// colour. Points that follow each other are mostly neighbours, which cost nothing; any other is
// found by bisection, so that as many chromosomes as there are points do no harm.
class ChromosomeWalk {
public:
    // Where the chromosomes start, in any order, and the red components of their colours; both
    // index-aligned and not empty.
    ChromosomeWalk(const QVector<int>& startValue, const QVector<int>& colorValue);

    // The last chromosome that starts at or before the coordinate, or else the first.
    qsizetype step(int position) {
        if (!isSameAt(position))
            search(position);
        return m_chromosome;
    }

    // True where a step to the coordinate would tell the same as the last step did.
    bool isSameAt(int position) const { return m_from <= position && position < m_to; }

    // The red component of the points at the coordinate of the last step. One left of all
    // chromosomes but the first keeps the component of the step before it; 255 at the beginning.
    int red() const { return m_red; }

private:
    void search(int position);

    QVector<int> m_smallestStart; // of each chromosome and all behind it: in ascending order
    QVector<int> m_colorValue;
    qsizetype m_chromosome = 0;
    int m_red = 255;
    qint64 m_from = 0; // the stretch in which the last step's answer holds: none as yet
    qint64 m_to = 0;
};
