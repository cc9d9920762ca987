#pragma once

#include "plain_columns.h"
#include "table_format.h"

#include <QStringList>

namespace plain {

// How a table is laid out.
struct Table {
    Separator separator = Separator::Tab; // of its body
    qsizetype header = -1;                // its line, from 0; -1 without
    QStringList titles;
    Columns columns;
    bool quoted = false;
    bool decimalComma = false;

    // A number's text, with a point.
    QString withPoint(const QString& text) const;
};

// Finds the header among the lines of a table, and with it the separator and the columns. Throws a
// Failure where there is none.
Table findTable(const QStringList& lines, const PrepareOptions& options);

} // namespace plain
