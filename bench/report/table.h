#pragma once

#include "report/bars.h"

#include <QStringList>

// Prints tables in Markdown to standard output, each row as soon as it is measured.
void startTable(const QStringList& titles);
void addRow(const QStringList& cells);

// Rows of a table with these columns. Each adds one row and returns its verdict.
const QStringList verdictTitles{"what", "Pelmark", "compared with", "measured", "bar", ""};

struct Timed {
    QString name;
    Samples seconds;
};

Verdict addRatio(const Bar& bar, const QString& what, qint64 lines, const Samples& seconds,
                 const Timed& other);
Verdict addBytes(const Bar& bar, const QString& what, qint64 lines, double bytes);
