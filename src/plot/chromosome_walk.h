#pragma once

#include "chromosome.h"

#include <QList>
#include <QtGlobal>

// The red component of a chromosome's colour in the genome plot: 255, 50, 255, 50 ...
constexpr int chromosomeRed(qsizetype chromosome) {
    return chromosome % 2 == 0 ? 255 : 50;
}

// Says for one genome coordinate after the other which chromosome it lies on and its points'
// colour. Consecutive points usually share a chromosome; otherwise a binary search finds it.
class ChromosomeWalk {
public:
    // The chromosomes may start in any order; there is one at least.
    explicit ChromosomeWalk(const QList<Chromosome>& chromosomes);

    // The last chromosome that starts at or before the coordinate, or else the first.
    qsizetype step(int position) {
        if (!isSameAt(position))
            search(position);
        return m_chromosome;
    }

    // True where a step to the coordinate would give the same as the last step did.
    bool isSameAt(int position) const { return m_from <= position && position < m_to; }

    // The red component of the points at the coordinate of the last step. One left of all
    // chromosomes but the first keeps the component of the step before it; 255 at the beginning.
    int red() const { return m_red; }

private:
    void search(int position);

    QList<int> m_smallestStart; // of each chromosome and all after it: in ascending order
    qsizetype m_chromosome = 0;
    int m_red = chromosomeRed(0);
    qint64 m_from = 0; // the stretch in which the last step's answer holds: none as yet
    qint64 m_to = 0;
};
