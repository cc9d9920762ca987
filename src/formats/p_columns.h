#pragma once

#include "head_table.h"
#include "place_columns.h"
#include "refusal.h"
#include "table_format.h"

#include <optional>

// Chooses the column of p, or of its logarithm, or a pair of both; or the effects that p is
// computed from, where the options ask for it.
std::optional<Refusal> choosePValue(const HeadTable& table, const NamedColumns& named,
                                    const PrepareOptions& options, ColumnChoice& choice);
