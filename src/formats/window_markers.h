#pragma once

#include "scan_table.h"

#include <QString>
#include <optional>

// The markers that the window's chromosome view shows of a file as it stands: of each label, those
// of its first stretch of lines, in file order. Nothing where the window does not open the file.
std::optional<ScanTable> readWindowMarkers(const QString& path);
