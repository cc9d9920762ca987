#include "report/programs.h"
#include "report/scan_file.h"
#include "report/sections.h"
#include "report/table.h"

#include <algorithm>

namespace {

constexpr qint64 million = 1'000'000;
constexpr qint64 barsFrom = 10 * million;     // lines: the size that the bars were set for
constexpr qint64 plainWayUpTo = 10 * million; // lines: it takes so long and so much memory

struct Opening {
    qint64 lines = 0;
    Samples open, pick, countLines, plain;
    double memory = 0.0, memoryBefore = 0.0; // bytes
};

Opening measure(qint64 lines, int rounds) {
    const ScanFile file(plainLayout(), lines);
    Opening opening;
    opening.lines = lines;
    for (int round = 0; round < rounds; ++round) {
        const Told window = runWindow({file.path(), "pick-last"});
        opening.open.add(window["open"]);
        opening.pick.add(window["pick-last"]);
        opening.memory = std::max(opening.memory, window["memory"]);
        opening.memoryBefore = std::max(opening.memoryBefore, window["memory-before"]);
        opening.countLines.add(secondsOf({"wc", "-l", file.path()}));
        if (lines <= plainWayUpTo)
            opening.plain.add(runParts({"plain-open", file.path()})["plain"]);
    }
    return opening;
}

QString toldLines(qint64 lines) {
    return lines % million == 0 ? QStringLiteral("%1 million lines").arg(lines / million)
                                : QStringLiteral("%1 lines").arg(lines);
}

QString verdictAt(qint64 lines, bool isMet) {
    return lines < barsFrom ? QStringLiteral("(for 10 million)") : verdict(isMet);
}

void addQuotient(const Opening& opening, const QString& what, const Samples& samples, double bar) {
    const double quotient = samples.median() / opening.countLines.median();
    Table::addRow({toldLines(opening.lines), what, told(samples),
                   "`wc -l` " + told(opening.countLines), times(quotient),
                   QStringLiteral("at most %1 x").arg(bar),
                   verdictAt(opening.lines, quotient <= bar)});
}

void addOpening(const Opening& opening) {
    constexpr double timesFaster = 25.0;
    if (!opening.plain.isEmpty()) {
        const double quotient = opening.plain.median() / opening.open.median();
        Table::addRow({toldLines(opening.lines), "open", told(opening.open),
                       "plain way " + told(opening.plain), times(quotient), "at least 25 x",
                       verdictAt(opening.lines, quotient >= timesFaster)});
    }
    addQuotient(opening, "open", opening.open, 9.0);
    addQuotient(opening, "pick of the last chromosome", opening.pick, 4.0);
}

void addMemory(const Opening& opening) {
    const double bar = 28.0 * static_cast<double>(opening.lines) + 60e6;
    Table::addRow({toldLines(opening.lines), toldBytes(opening.memory),
                   toldBytes(opening.memoryBefore), toldBytes(bar),
                   verdict(opening.memory <= bar)});
}

// Per line, in nanoseconds, less what any file takes.
double perLine(const Opening& opening, double anyFile) {
    return 1e9 * (opening.open.median() - anyFile) / static_cast<double>(opening.lines);
}

void addGrowth(const QString& what, const QList<Opening>& openings, double anyFile) {
    QStringList cells{what};
    QList<double> all;
    for (const Opening& opening : openings) {
        all.append(perLine(opening, anyFile));
        cells.append(QString::number(all.last(), 'f', 1) + " ns");
    }
    const auto [least, most] = std::minmax_element(all.cbegin(), all.cend());
    const double difference = *most / *least - 1.0;
    const bool isJudged = openings.size() > 1 && openings.constFirst().lines >= million;
    cells << QStringLiteral("%1 %").arg(100.0 * difference, 0, 'f', 0) << "at most 20 %"
          << (isJudged ? verdict(difference <= 0.2) : QStringLiteral("(from 1 million)"));
    Table::addRow(cells);
}

// What every opening takes, however small the file; the dialog is closed before it starts.
struct AnyFile {
    Samples open, dialog;
};

AnyFile measureAnyFile(int rounds) {
    const ScanFile file(plainLayout(), 46);
    AnyFile any;
    for (int round = 0; round < rounds; ++round) {
        const Told window = runWindow({file.path()});
        any.open.add(window["open"]);
        any.dialog.add(window["dialog"]);
    }
    return any;
}

void reportGrowth(const QList<Opening>& openings, const AnyFile& anyFile) {
    QStringList titles{"open, time per line"};
    for (const Opening& opening : openings)
        titles << toldLines(opening.lines);
    const Table table(titles << "difference"
                             << "bar"
                             << "");
    addGrowth("whole", openings, 0.0);
    addGrowth("less a file of 46 lines: " + told(anyFile.open), openings, anyFile.open.median());
    Table::addRow({"not counted: the file dialog closes, in " + told(anyFile.dialog)});
}

} // namespace

void reportOpenings(const Extent& extent) {
    const AnyFile anyFile = measureAnyFile(extent.rounds);
    QList<Opening> openings;
    {
        const Table table({"file", "what", "Pelmark", "compared with", "ratio", "bar", ""});
        for (const qint64 lines : extent.sizes) {
            openings.append(measure(lines, extent.rounds));
            addOpening(openings.constLast());
        }
    }
    {
        const Table table({"file", "peak memory after opening", "before opening",
                           "bar: 28 bytes per point and 60 MB", ""});
        for (const Opening& opening : openings)
            addMemory(opening);
    }
    reportGrowth(openings, anyFile);
}
