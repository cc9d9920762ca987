#pragma once

#include "prepare_options.h"

#include <QStringList>

// Names of chromosomes.
namespace plain {

// The same for all spellings of one chromosome.
QString chromosomeKey(const QString& name);

// Whether the first comes before the second; both are keys.
bool comesBefore(const QString& a, const QString& b);

// The names to write for chromosomes, by the names of all of them and the titles of their table.
class ChromosomeWriter {
public:
    ChromosomeWriter(const QStringList& names, const QStringList& titles, ChromosomeNames style);

    QString nameOf(const QString& name) const;

private:
    QString plainName(const QString& name) const;

    ChromosomeNames m_style;
    bool m_isHuman = true; // no number is above 26
    QString m_nameOf25 = QStringLiteral("25");
};

} // namespace plain
