#include "chromosome_walk.h"

#include <algorithm>
#include <limits>

ChromosomeWalk::ChromosomeWalk(const QVector<int>& startValue, const QVector<int>& colorValue)
    : m_smallestStart(startValue), m_colorValue(colorValue) {
    for (qsizetype k = m_smallestStart.size() - 2; k >= 0; --k)
        m_smallestStart[k] = std::min(m_smallestStart[k], m_smallestStart[k + 1]);
}

void ChromosomeWalk::search(int position) {
    const auto afterFirst = m_smallestStart.cbegin() + 1, end = m_smallestStart.cend();
    auto behind = afterFirst + m_chromosome;
    // A file's points mostly go on to the next chromosome.
    const bool isNext =
        behind != end && *behind <= position && (behind + 1 == end || position < behind[1]);
    behind = isNext ? behind + 1 : std::upper_bound(afterFirst, end, position);
    m_chromosome = behind - afterFirst;
    m_from = m_chromosome == 0 ? std::numeric_limits<int>::min() : *(behind - 1);
    m_to = behind == end ? std::numeric_limits<qint64>::max() : *behind;
    if (m_chromosome > 0)
        m_red = m_colorValue[m_chromosome];
}
