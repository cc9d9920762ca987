#pragma once

#include "chromosome_names.h"
#include "prepare_report.h"
#include "row_sink.h"

#include <QSet>

// The chromosomes of a table, once all are known, under the names by which they are written.
// Several labels may share a name: they are then one chromosome.
class WrittenChromosomes {
public:
    // `titles` are those of the table, which tell what its numbers of chromosomes mean.
    WrittenChromosomes(const std::vector<TableChromosome>& chromosomes,
                       const QList<QByteArray>& titles, ChromosomeNames names);

    const NamedChromosomes& named() const { return m_named; }
    bool areAllKept() const { return m_named.names == m_labels; } // under their labels

    // Those with fewer markers, by their number.
    QSet<quint32> smallerThan(qint64 markers) const;

    // Those with markers, in order. `ranks` are those of the names.
    QList<ChromosomeCount> counts(const QList<quint32>& ranks) const;

private:
    QList<QByteArray> m_labels;
    NamedChromosomes m_named;
    QList<qsizetype> m_numbers; // of the labels' names, from 0 in the order of their first labels
    QList<qint64> m_markers;    // of each name, by its number
};
