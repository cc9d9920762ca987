#include "written_chromosomes.h"

#include "role_titles.h"

#include <QHash>

WrittenChromosomes::WrittenChromosomes(const std::vector<TableChromosome>& chromosomes,
                                       const QList<QByteArray>& titles, ChromosomeNames names) {
    for (const TableChromosome& chromosome : chromosomes)
        m_labels.append(chromosome.label);
    m_named = nameChromosomes(m_labels, names, areOfPlink(titles), areOfSsf(titles));
    QHash<QByteArray, qsizetype> numbers; // of the names, from 1
    numbers.reserve(m_labels.size());
    for (qsizetype i = 0; i < m_labels.size(); ++i) {
        qsizetype& number = numbers[m_named.names[i]];
        if (number == 0) {
            m_markers.append(0);
            number = m_markers.size();
        }
        m_numbers.append(number - 1);
        m_markers[number - 1] += chromosomes[static_cast<size_t>(i)].markers;
    }
}

QSet<quint32> WrittenChromosomes::smallerThan(qint64 markers) const {
    QSet<quint32> numbers;
    for (qsizetype i = 0; i < m_named.names.size(); ++i)
        if (m_markers[m_numbers[i]] < markers)
            numbers.insert(static_cast<quint32>(i));
    return numbers;
}

QList<ChromosomeCount> WrittenChromosomes::counts(const QList<quint32>& ranks) const {
    QList<ChromosomeCount> counts(ranks.size());
    for (qsizetype i = 0; i < ranks.size(); ++i)
        counts[ranks[i]] = {m_named.names[i], m_markers[m_numbers[i]]};
    counts.removeIf([](const ChromosomeCount& count) { return count.markers == 0; });
    return counts;
}
