#include "report/programs.h"
#include "report/scan_file.h"
#include "report/sections.h"
#include "report/table.h"

#include <algorithm>

namespace {

constexpr double cliff = 4.0; // times the plain layout's time per byte

// Of about as many bytes as a plain file of so many lines.
qint64 markersFor(const ScanLayout& layout, qint64 plainLines) {
    return std::max<qint64>(plainLines / layout.plainLines, 20);
}

// A file of few lines opens in no time, and few labels are no trouble; one line has to be long.
qint64 plainLinesFor(const ScanLayout& layout, qint64 largest) {
    return std::min<qint64>(layout.lineEnd.empty() ? 5'000'000 : 1'000'000, largest);
}

void reportOddFile(const ScanLayout& layout, qint64 plainLines, int rounds) {
    const ScanFile plain(plainLayout(), plainLines);
    const ScanFile odd(layout, markersFor(layout, plainLines));
    Samples plainTimes, oddTimes;
    double memory = 0.0;
    for (int round = 0; round < rounds; ++round) {
        plainTimes.add(runWindow({plain.path()})["open"]);
        const Told told = runWindow({odd.path()});
        oddTimes.add(told.contains("end") ? told["end"] : told["open"]);
        memory = std::max(memory, told["memory"]);
    }
    const double quotient = oddTimes.median() / odd.bytes() / (plainTimes.median() / plain.bytes());
    Table::addRow({QString::fromStdString(layout.description), toldBytes(odd.bytes()),
                   told(oddTimes), toldBytes(plain.bytes()), told(plainTimes), times(quotient),
                   verdict(quotient <= cliff),
                   memory > 0.0 ? toldBytes(memory) : QStringLiteral("(no points)")});
}

QString labelIn(const ScanLayout& layout) {
    return layout.hasLeadingId ? QStringLiteral("rs0") : QStringLiteral("1");
}

bool isSame(const ScanLayout& layout, qint64 plainLines) {
    const ScanFile file(layout, markersFor(layout, plainLines));
    const double seconds = secondsOf({QStringLiteral(PELMARK_PARTS), "same", file.path(),
                                      labelIn(layout), inWorkFolder(QString())});
    if (seconds < 0.0)
        Table::addRow({QString::fromStdString(layout.description), "**differ**"});
    return seconds >= 0.0;
}

} // namespace

void reportOddFiles(const Extent& extent) {
    const qint64 largest = extent.sizes.constLast();
    const Table table({"odd files", "size", "open", "plain file", "open", "time per MB",
                       QStringLiteral("at most %1 x").arg(cliff), "peak memory"});
    for (const ScanLayout& layout : oddLayouts()) {
        if (layout.hasLeadingId)
            reportOddFile(layout, std::min<qint64>(50'000, largest), extent.rounds);
        reportOddFile(layout, plainLinesFor(layout, largest), extent.rounds);
    }
}

bool reportSameness(const Extent& extent) {
    const qint64 lines = std::min<qint64>(extent.sizes.constLast(), 20'000);
    const Table table({"quick and plain", "points, plots and tables"});
    bool isAlike = isSame(plainLayout(), std::min<qint64>(extent.sizes.constLast(), 1'000'000));
    for (const ScanLayout& layout : oddLayouts())
        isAlike = isSame(layout, lines) && isAlike;
    if (isAlike)
        Table::addRow({"all layouts", "the same"});
    return isAlike;
}
