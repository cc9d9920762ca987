#pragma once

#include "head_table.h"
#include "table_format.h"

#include <variant>

// Chooses a table's columns by titles, options and the values of its first lines. `isWhole` says
// that the table has no other lines.
std::variant<ColumnChoice, Refusal> chooseColumns(const HeadTable& table, bool isWhole,
                                                  const PrepareOptions& options);
