// What prepare() promises of any file: it refuses, or each row is written or counted; the window's
// reader opens what is written; preparing that again gives the same bytes; and the quick way into
// memory finds the same markers. Input: options, the file.

#include "prepare.h"
#include "finding.h"
#include "genome_scan.h"
#include "input.h"
#include "input_file.h"
#include "quick_scan.h"

#include <QTemporaryFile>
#include <numeric>

namespace {

PrepareOptions options(Input& input) {
    PrepareOptions options;
    const int bits = input.number<std::uint8_t>();
    options.noHeader = bits == 1;
    if (options.noHeader) {
        options.chromosome = "1";
        options.position = "2";
        options.p = "3";
    }
    options.zeroBased = bits == 2;
    options.authorBuild = bits == 3;
    options.zeroP = bits % 5 == 4 ? ZeroP::Drop : ZeroP::Smallest;
    options.allColumns = bits % 7 == 6;
    options.memory = bits % 11 == 10 ? 1000 : 1 << 20;
    return options;
}

void write(QTemporaryFile& file, const QByteArray& bytes) {
    const bool isWritten = (file.isOpen() || file.open()) && file.resize(0) && file.seek(0) &&
                           file.write(bytes) == bytes.size() && file.flush();
    mustHold(isWritten, "temporary file");
}

// Nothing where the file is refused.
std::optional<QByteArray> prepared(const QString& path, const PrepareOptions& options,
                                   PrepareReport& report) {
    QTemporaryFile output;
    mustHold(output.open(), "temporary file");
    auto result = prepare({{path}, options, nullptr, [](qint64) {}}, output);
    if (!std::holds_alternative<PrepareReport>(result))
        return std::nullopt;
    report = std::get<PrepareReport>(std::move(result));
    output.seek(0);
    return output.readAll();
}

void checkRows(const PrepareReport& report, const QByteArray& table) {
    const qint64 dropped =
        std::accumulate(report.dropped.begin(), report.dropped.end(), qint64{0},
                        [](qint64 sum, const Dropped& each) { return sum + each.count; });
    mustHold(report.rows == report.written + dropped, "rows accounted for");
    mustHold(table.count('\n') == report.written + 1, "rows written");
}

void checkWindow(const QString& path, qint64 written) {
    QFile file(path);
    const Result<GenomeScan> scan = scanGenome(file, {});
    const auto* points = std::get_if<GenomeScan>(&scan);
    mustHold(points || written < 2, "the window opens it");
    mustHold(!points || points->points.values.size() == written, "the window shows all of it");
}

void checkQuickScan(const QString& path, const PrepareOptions& options) {
    const auto understood = understandFiles({path}, options);
    const auto* tables = std::get_if<QList<Understanding>>(&understood);
    const auto quick =
        tables ? quickScan(path, tables->first(), options, [](qint64) {}) : std::nullopt;
    if (!quick)
        return;
    const auto slow = preparedScan(path, options);
    const auto* scan = std::get_if<ScanTable>(&slow);
    mustHold(scan, "quick scan of a refused table");
    mustHold(quick->points == scan->points && quick->lines == scan->lines, "quick scan");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const PrepareOptions chosen = options(input);
    QTemporaryFile first, second;
    write(first, input.rest());
    PrepareReport report, again;
    checkQuickScan(first.fileName(), chosen);
    const std::optional<QByteArray> table = prepared(first.fileName(), chosen, report);
    if (!table)
        return 0;
    checkRows(report, *table);
    write(second, *table);
    checkWindow(second.fileName(), report.written);
    PrepareOptions all;
    all.allColumns = chosen.allColumns;
    const std::optional<QByteArray> twice = prepared(second.fileName(), all, again);
    mustHold(twice.has_value(), "prepared again");
    mustHold(*twice == *table, "the same bytes again", QString::fromUtf8(*table),
             QString::fromUtf8(*twice));
    return 0;
}
