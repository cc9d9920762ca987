#pragma once

#include "prepare_options.h"
#include "scan_table.h"

#include <QString>
#include <functional>
#include <optional>

// Reads a table of the plainest kind several times faster than prepare() does: in order, with
// columns of its own for chromosome, position and p, single separators, and numbers that need no
// second look. The result is the same, with p at the points where that is asked for. Nothing for
// any other table, and for one that cannot be read or would be refused.
std::optional<ScanTable>
quickScan(const QString& path, const Understanding& understanding, const PrepareOptions& options,
          const std::function<void(qint64)>& progress,
          PointCollector::Values values = PointCollector::Values::NegLog10);
