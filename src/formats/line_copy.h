#pragma once

#include "refusal.h"
#include "table_format.h"

#include <QIODevice>
#include <QString>
#include <optional>
#include <vector>

// Which lines of a table are copied, besides its head (all before the first row), its comments and
// headers that come back: either those listed alone, or all but those.
struct LineChoice {
    std::vector<qint64> lines; // ascending, each once; from 1
    bool areKept = false;
};

// Copies lines of a file, plain or packed, byte for byte: in its own encoding, with its own line
// ends and its byte-order mark.
std::optional<Refusal> copyLines(const QString& path, const TableFormat& format,
                                 const LineChoice& choice, QIODevice& to);
