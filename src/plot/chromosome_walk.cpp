#include "chromosome_walk.h"

#include <algorithm>
#include <limits>

ChromosomeWalk::ChromosomeWalk(const QList<Chromosome>& chromosomes) {
    m_smallestStart.reserve(chromosomes.size());
    for (const Chromosome& chromosome : chromosomes)
        m_smallestStart.append(chromosome.startValue);
    for (qsizetype k = m_smallestStart.size() - 2; k >= 0; --k)
        m_smallestStart[k] = std::min(m_smallestStart[k], m_smallestStart[k + 1]);
}

void ChromosomeWalk::search(int position) {
    const auto afterFirst = m_smallestStart.cbegin() + 1, end = m_smallestStart.cend();
    auto next = afterFirst + m_chromosome;
    // A file's points mostly go on to the next chromosome.
    const bool isNext = next != end && *next <= position && (next + 1 == end || position < next[1]);
    next = isNext ? next + 1 : std::upper_bound(afterFirst, end, position);
    m_chromosome = next - afterFirst;
    m_from = m_chromosome == 0 ? std::numeric_limits<int>::min() : *(next - 1);
    m_to = next == end ? std::numeric_limits<qint64>::max() : *next;
    if (m_chromosome > 0)
        m_red = chromosomeRed(m_chromosome);
}
