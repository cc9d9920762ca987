#pragma once

#include "plain_rows.h"

namespace plain {

// Throws a Failure where the values of some rows cannot be what the columns were chosen for.
void judge(const QList<Row>& rows, const RowReader& reader, const Columns& columns);

// The same for all rows of a table, before they are filtered. Finds out which logarithms it holds.
void judgeTable(Table& table, QList<Row> rows, const PrepareOptions& options);

} // namespace plain
