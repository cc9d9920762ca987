#include "report/programs.h"
#include "report/scan_file.h"
#include "report/sections.h"
#include "report/table.h"

#include <algorithm>
#include <cstdlib>

namespace {

// Gives a file of about as many bytes as a plain one of so many lines.
qint64 markersFor(const ScanLayout& layout, qint64 plainLines) {
    return std::max<qint64>(plainLines / layout.plainLines, 20);
}

Verdict addOddFile(const Bar& bar, const ScanLayout& layout, qint64 plainLines, int rounds) {
    const ScanFile plain(plainLayout(), plainLines);
    const ScanFile odd(layout, markersFor(layout, plainLines));
    const QList<Series> measured = inTurns(rounds, {window({plain.path()}), window({odd.path()})});
    const Samples plainTimes = measured[0]["open"];
    const bool hasPoints = measured[1].contains("open");
    const Samples oddTimes = measured[1][hasPoints ? "open" : "end"];
    const QString what = QString::fromStdString(layout.description);
    const Verdict verdict = bar.judge(
        what, oddTimes.median() / odd.bytes() / (plainTimes.median() / plain.bytes()), plainLines);
    addRow(QStringList{what, bytesText(odd.bytes()), secondsText(oddTimes),
                       bytesText(plain.bytes()), secondsText(plainTimes),
                       hasPoints ? bytesText(measured[1]["memory"].maximum()) : "(no points)"} +
           verdict.cells());
    return verdict;
}

bool isSame(const ScanLayout& layout, qint64 plainLines) {
    const ScanFile file(layout, markersFor(layout, plainLines));
    const bool isAlike = succeeds(
        {PELMARK_PARTS, "same", file.path(), layout.hasLeadingId ? "rs0" : "1", inWorkFolder("")});
    addRow({QString::fromStdString(layout.description), isAlike ? "the same" : "**differ**"});
    return isAlike;
}

} // namespace

QList<Verdict> reportOddFiles(const Plan& plan) {
    const Bar bar = plan.bars["odd-vs-plain"];
    QList<Verdict> verdicts;
    startTable(QStringList{"odd files", "size", "open", "plain file", "open", "peak memory"} +
               verdictTitles.mid(3));
    for (const ScanLayout& layout : oddLayouts()) {
        // At two sizes, to show work that grows with the square of the number of labels.
        if (layout.hasLeadingId)
            verdicts << addOddFile(bar, layout, plan.upTo(50'000), plan.rounds);
        // Without line ends it takes a large file to measure anything but the start.
        const qint64 lines = layout.lineEnd.empty() ? 5'000'000 : 1'000'000;
        verdicts << addOddFile(bar, layout, plan.upTo(lines), plan.rounds);
    }
    return verdicts;
}

QList<Verdict> reportSameness(const Plan& plan) {
    startTable({"program and plain reference", "points, plots and tables"});
    bool isAlike = isSame(plainLayout(), plan.upTo(1'000'000));
    for (const ScanLayout& layout : oddLayouts())
        isAlike = isSame(layout, plan.upTo(20'000)) && isAlike;
    if (!isAlike)
        std::exit(1);
    return {};
}
