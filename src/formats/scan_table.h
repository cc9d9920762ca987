#pragma once

#include "point_collector.h"
#include "points.h"
#include "prepare_options.h"
#include "prepare_report.h"
#include "refusal.h"
#include "row_lines.h"
#include "table_rows.h"

#include <QHash>
#include <QString>
#include <cmath>
#include <functional>
#include <variant>

// The markers of a result file in memory: what prepare() would write of it, in the same order.
struct ScanTable {
    struct Chromosome {
        QByteArray name;
        size_t begin = 0, end = 0; // its rows
    };

    QList<Chromosome> chromosomes;
    // Index-aligned: entry i of each list is one row.
    Points points; // base pairs, and -log10 p as the window computes it of the p that is written
    bool arePValues = false;           // the points have p instead
    RowLines lines;                    // of the file, header included, from 1
    QHash<size_t, double> belowNormal; // the true -log10 p of rows whose p no normal double holds
    QList<LinePlace> places;           // of lines in the file, ascending; perhaps none
    PrepareReport report;

    size_t size() const { return lines.size(); }
    int position(size_t row) const { return points.positions[static_cast<qsizetype>(row)]; }
    double value(size_t row) const { // -log10 p
        const double value = points.values[static_cast<qsizetype>(row)];
        return arePValues ? -std::log10(value) : value;
    }

    // The true -log10 p, also below the smallest double.
    double negLog10(size_t row) const {
        return belowNormal.isEmpty() ? value(row) : belowNormal.value(row, value(row));
    }
};

// Reads a file, plain or packed, by the rule of prepare() and with its options. `progress` receives
// the packed bytes read so far. Where few values are needed, p saves the logarithms; the points may
// have them all the same.
std::variant<ScanTable, Refusal> readScanTable(
    const QString& path, const PrepareOptions& options,
    const std::function<void(qint64)>& progress = [](qint64) {},
    PointCollector::Values values = PointCollector::Values::NegLog10);

// The same by way of prepare(), for tables of any kind.
std::variant<ScanTable, Refusal> preparedScan(
    const QString& path, const PrepareOptions& options,
    const std::function<void(qint64)>& progress = [](qint64) {});

// Reads these lines of the table's file again. They ascend; `visit` is called with each of them and
// its place among them. Nothing where all went well.
std::optional<Refusal>
visitLines(const QString& path, const ScanTable& table, const std::vector<qint64>& lines,
           const std::function<void(size_t i, const TableRows& rows)>& visit);
