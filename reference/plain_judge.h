#pragma once

#include "plain_rows.h"

namespace plain {

// Throws a Failure where the values of some rows cannot be what the columns were chosen for.
void judge(const QList<Row>& rows, const RowReader& reader, const Columns& columns);

} // namespace plain
