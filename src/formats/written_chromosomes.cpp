#include "written_chromosomes.h"

#include "role_titles.h"

#include <QMap>

WrittenChromosomes::WrittenChromosomes(const std::vector<TableChromosome>& chromosomes,
                                       const QList<QByteArray>& titles, ChromosomeNames names) {
    for (const TableChromosome& chromosome : chromosomes)
        m_labels.append(chromosome.label);
    m_named = nameChromosomes(m_labels, names, areOfPlink(titles), areOfSsf(titles));
    for (qsizetype i = 0; i < m_labels.size(); ++i)
        m_markers[m_named.names[i]] += chromosomes[static_cast<size_t>(i)].markers;
}

QSet<quint32> WrittenChromosomes::smallerThan(qint64 markers) const {
    QSet<quint32> numbers;
    for (qsizetype i = 0; i < m_named.names.size(); ++i)
        if (m_markers[m_named.names[i]] < markers)
            numbers.insert(static_cast<quint32>(i));
    return numbers;
}

QList<ChromosomeCount> WrittenChromosomes::counts(const QList<quint32>& ranks) const {
    QMap<quint32, ChromosomeCount> byRank;
    for (qsizetype i = 0; i < ranks.size(); ++i)
        if (const QByteArray& name = m_named.names[i]; m_markers[name] > 0)
            byRank.insert(ranks[i], {name, m_markers[name]});
    return byRank.values();
}
