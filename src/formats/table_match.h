#pragma once

#include "saved_table.h"
#include "scan_table.h"

#include <QByteArray>
#include <QList>
#include <optional>
#include <vector>

// A saved table whose rows are looked for.
struct WantedTable {
    SavedTable table;
    std::optional<QByteArray> label; // of the chromosome, where the user said which
};

// Where a table's rows are. A row is a marker with the same position whose numbers the window
// prints the same. A chromosome fits where every row is as often as the table names it.
struct TableMatch {
    QList<QByteArray> fitting; // names; all of them

    // The chromosome that holds the most rows, the first one of those. Empty for none.
    QByteArray chromosome;
    std::vector<qint64> lines;     // of the markers matched, those of equal rows in file order
    qint64 equal = 0;              // of these lines: more markers are like them than are named
    std::optional<size_t> missing; // the first row of the table that it lacks
};

// Matches each table for itself: index-aligned with `tables`.
std::vector<TableMatch> matchTables(const ScanTable& scan, const std::vector<WantedTable>& tables);
