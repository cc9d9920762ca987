#include "scan_table.h"

#include "block_size.h"
#include "input_file.h"
#include "number_fields.h"
#include "p_value.h"
#include "prepare.h"
#include "quick_scan.h"
#include "titles.h"

#include <QTemporaryFile>
#include <cfloat>
#include <charconv>

namespace {

qint64 wholeNumber(std::string_view text) {
    qint64 number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// Takes a row of a prepared table, whose last column is the line.
void takeRow(const LineFields& fields, ScanTable& table, PointCollector& points) {
    const std::string_view name = fields.field(0), log = fields.field(3);
    const size_t row = table.size();
    if (table.chromosomes.isEmpty() || viewOf(table.chromosomes.last().name) != name)
        table.chromosomes.append({bytesOf(name), row, row});
    double p = 0.0, negLog10 = 0.0;
    readReal(fields.field(2), p);
    points.append(static_cast<int>(wholeNumber(fields.field(1))), p);
    table.lines.append(wholeNumber(fields.field(fields.fieldCount() - 1)));
    if (p < DBL_MIN && readNumber(log, false, negLog10))
        table.belowNormal.insert(row, negLog10);
    table.chromosomes.last().end = row + 1;
}

bool readPrepared(QIODevice& device, ScanTable& table) {
    TextBlocks blocks(device, tableBlockSize, TextBlocks::Unmarked::AsTheyAre);
    LineFields fields;
    PointCollector points;
    bool isHeader = true;
    while (blocks.next()) {
        fields.find(blocks.piece(), '\t');
        while (fields.nextLine())
            if (!std::exchange(isHeader, false))
                takeRow(fields, table, points);
    }
    table.points = points.take();
    return !blocks.failed();
}

Refusal unreadable(const QFileDevice& file) {
    return {RefusalCode::Unwritable, file.errorString(), {}, {}};
}

} // namespace

std::variant<ScanTable, Refusal> readScanTable(const QString& path, const PrepareOptions& options,
                                               const std::function<void(qint64)>& progress,
                                               PointCollector::Values values) {
    const auto understood = understandFiles({path}, options);
    if (const auto* refusal = std::get_if<Refusal>(&understood))
        return *refusal;
    const Understanding& understanding = std::get<QList<Understanding>>(understood).first();
    if (auto scan = quickScan(path, understanding, options, progress, values))
        return std::move(*scan);
    return preparedScan(path, options, progress);
}

std::variant<ScanTable, Refusal> preparedScan(const QString& path, const PrepareOptions& options,
                                              const std::function<void(qint64)>& progress) {
    QTemporaryFile prepared;
    if (!prepared.open())
        return unreadable(prepared);
    PrepareJob job{{path}, options, nullptr, progress};
    job.options.allColumns = false;
    job.options.lineNumbers = true;
    auto report = prepare(job, prepared);
    if (auto* refusal = std::get_if<Refusal>(&report))
        return std::move(*refusal);
    ScanTable table;
    table.report = std::get<PrepareReport>(std::move(report));
    if (!prepared.seek(0) || !readPrepared(prepared, table))
        return unreadable(prepared);
    return table;
}

std::optional<Refusal>
visitLines(const QString& path, const ScanTable& table, const std::vector<qint64>& lines,
           const std::function<void(size_t i, const TableRows& rows)>& visit) {
    InputFile input(path);
    if (std::optional<Refusal> refusal = input.open())
        return refusal;
    constexpr qsizetype shortBlock = 8 * 1024; // enough from one known place to the next
    TableRows rows(input.text(), table.report.table.format,
                   table.places.isEmpty() ? tableBlockSize : shortBlock);
    for (size_t i = 0; i < lines.size(); ++i) {
        const bool isThere = rows.goTo(lines[i], table.places);
        if (rows.failed())
            return input.failure();
        if (!isThere || rows.fieldCount() < table.report.table.columns.fieldsNeeded())
            return Refusal{RefusalCode::Unreadable,
                           path + QStringLiteral(": was changed while it was read."),
                           {},
                           {}};
        visit(i, rows);
    }
    return std::nullopt;
}
