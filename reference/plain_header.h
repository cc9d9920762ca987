#pragma once

#include "plain_columns.h"
#include "plain_layout.h"

#include <QStringList>

namespace plain {

struct Table : Layout {
    Columns columns;
};

// Finds the header among the lines of a table, and with it the separator and the columns. Throws a
// Failure where there is none.
Table findTable(const QStringList& lines, const PrepareOptions& options);

} // namespace plain
