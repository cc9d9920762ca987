#pragma once

#include "prepare_options.h"
#include "prepare_report.h"
#include "refusal.h"
#include "table_rows.h"

#include <QHash>
#include <QString>
#include <functional>
#include <variant>
#include <vector>

// The markers of a result file in memory: what prepare() would write of it, in the same order.
struct ScanTable {
    struct Chromosome {
        QByteArray name;
        size_t begin = 0, end = 0; // its rows
    };

    QList<Chromosome> chromosomes;
    // Index-aligned: entry i of each is one row.
    std::vector<int> positions; // base pairs
    std::vector<double> values; // -log10 p, as the window computes it of the p that is written
    std::vector<qint64> lines;  // of the file, header included, from 1
    QHash<size_t, double> belowNormal; // the true -log10 p of rows whose p no normal double holds
    PrepareReport report;

    // The true -log10 p, also below the smallest double.
    double negLog10(size_t row) const {
        return belowNormal.isEmpty() ? values[row] : belowNormal.value(row, values[row]);
    }
};

// Reads a file, plain or packed, by the rule of prepare() and with its options. `progress` receives
// the packed bytes read so far.
std::variant<ScanTable, Refusal> readScanTable(
    const QString& path, const PrepareOptions& options,
    const std::function<void(qint64)>& progress = [](qint64) {});

// The same by way of prepare(), for tables of any kind.
std::variant<ScanTable, Refusal> preparedScan(
    const QString& path, const PrepareOptions& options,
    const std::function<void(qint64)>& progress = [](qint64) {});

// Reads the file again and calls `visit` with each of these lines, which ascend, and its place
// among them. Nothing where all went well.
std::optional<Refusal>
visitLines(const QString& path, const TableFormat& format, const std::vector<qint64>& lines,
           const std::function<void(size_t i, const TableRows& rows)>& visit);
