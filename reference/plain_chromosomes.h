#pragma once

#include "prepare_options.h"

#include <QStringList>

// Names of chromosomes.
namespace plain {

// The same for all spellings of one chromosome.
QString chromosomeKey(const QString& name);

// Whether the first comes before the second; both are keys.
bool comesBefore(const QString& a, const QString& b);

// The name to write for a chromosome, by the names of all of them and by what 25 means if no 26
// occurs (empty where that is not known).
QString writtenName(const QString& name, const QStringList& all, const QString& of25,
                    ChromosomeNames names);

} // namespace plain
