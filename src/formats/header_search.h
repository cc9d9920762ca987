#pragma once

#include "head_table.h"
#include "table_format.h"

#include <variant>

// Finds the header line and what parts the fields, by trying which titles make sense of the lines
// after them.
std::variant<Understanding, Refusal> findHeader(const QList<HeadLine>& lines, bool isWhole,
                                                const PrepareOptions& options);

// The same for a table without titles, whose columns the options give by number.
std::variant<Understanding, Refusal> readWithoutHeader(const QList<HeadLine>& lines, bool isWhole,
                                                       const PrepareOptions& options);
