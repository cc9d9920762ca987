#pragma once

#include "head_table.h"
#include "refusal.h"
#include "table_format.h"

#include <optional>

// The columns that options name, from 0; -1 where they name none.
struct NamedColumns {
    int chromosome = -1, position = -1, p = -1, name = -1, test = -1;
    int z = -1, beta = -1, standardError = -1, sample = -1;
};

// Chooses the columns of chromosome and position, as a pair of one family or as one joined column.
std::optional<Refusal> choosePlace(const HeadTable& table, const NamedColumns& named,
                                   const PrepareOptions& options, ColumnChoice& choice);
