#pragma once

#include "head_table.h"
#include "table_format.h"

#include <variant>

// Chooses a table's columns by titles, options and the values of its first lines. `isWhole` says
// that the table has no other lines. Clears the format's decimal comma where only a column of texts
// has commas.
std::variant<ColumnChoice, Refusal> chooseColumns(HeadTable& table, bool isWhole,
                                                  const PrepareOptions& options);
