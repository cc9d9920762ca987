#pragma once

#include "table_format.h"

// The columns of a prepared table after its first four.

// The one that holds the marker's name; -1 for none. A table that was prepared before keeps its
// columns as they stand, so that preparing it again changes nothing.
int nameColumn(const ColumnChoice& columns);

// Those that come after the name: with `allColumns` all whose texts are not written anyway.
QList<int> otherColumns(const Understanding& table, const PrepareOptions& options);

// The first line of the prepared table, without its end.
QByteArray outputHeader(const Understanding& table, const PrepareOptions& options);
