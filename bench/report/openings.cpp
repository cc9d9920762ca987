#include "report/programs.h"
#include "report/scan_file.h"
#include "report/sections.h"
#include "report/table.h"

namespace {

constexpr qint64 plainWayUpTo = 10'000'000; // lines: more would take minutes and gigabytes

struct Opening {
    qint64 lines = 0;
    Series window, wc, plain;
};

Opening measure(qint64 lines, int rounds) {
    const ScanFile file(plainLayout(), lines);
    QList<Run> runs{window({file.path(), "pick-last"}), command({"wc", "-l", file.path()})};
    if (lines <= plainWayUpTo)
        runs << parts({"plain-open", file.path()});
    const QList<Series> measured = inTurns(rounds, runs);
    return {lines, measured[0], measured[1], measured.value(2)};
}

QList<Verdict> addOpening(const Bars& bars, const Opening& opening) {
    const QString open = "open " + linesText(opening.lines);
    const Timed wc{"`wc -l`", opening.wc["seconds"]};
    QList<Verdict> verdicts;
    if (!opening.plain.isEmpty())
        verdicts << addRatio(bars["open-vs-plain"], open, opening.lines, opening.window["open"],
                             {"plain reference", opening.plain["plain"]});
    return verdicts << addRatio(bars["open-vs-wc"], open, opening.lines, opening.window["open"], wc)
                    << addRatio(bars["pick-vs-wc"], open + ", pick the last chromosome",
                                opening.lines, opening.window["pick-last"], wc)
                    << addBytes(bars["open-memory"], open + ": peak memory", opening.lines,
                                opening.window["memory"].maximum());
}

// In nanoseconds, without the seconds that the smallest file takes.
double perLine(const Opening& opening, double smallest) {
    return 1e9 * (opening.window["open"].median() - smallest) / static_cast<double>(opening.lines);
}

Verdict addGrowth(const Bar& bar, const QString& what, const QList<Opening>& openings,
                  double smallest) {
    QStringList cells{what};
    Samples all;
    for (const Opening& opening : openings) {
        all.add(perLine(opening, smallest));
        cells << threeDigits(perLine(opening, smallest)) + " ns";
    }
    const bool isComparable = openings.size() > 1;
    const Verdict verdict = bar.judge(what, all.maximum() / all.minimum() - 1.0,
                                      isComparable ? openings.constFirst().lines : 0);
    addRow(cells + verdict.cells());
    return verdict;
}

QList<Verdict> reportGrowth(const Bar& bar, const QList<Opening>& openings, int rounds) {
    const ScanFile file(plainLayout(), 46);
    const Series smallest = inTurns(rounds, {window({file.path()})}).constFirst();
    QStringList titles{"open, time per line"};
    for (const Opening& opening : openings)
        titles << linesText(opening.lines);
    startTable(titles << verdictTitles.mid(3));
    const QList<Verdict> verdicts{
        addGrowth(bar, "whole", openings, 0.0),
        addGrowth(bar, "less a file of 46 lines: " + secondsText(smallest["open"]), openings,
                  smallest["open"].median())};
    addRow({"closing the file dialog, not included above: " + secondsText(smallest["dialog"])});
    addRow({"memory before opening: " + bytesText(smallest["memory-before"].maximum())});
    return verdicts;
}

} // namespace

QList<Verdict> reportOpenings(const Plan& plan) {
    QList<Opening> openings;
    QList<Verdict> verdicts;
    startTable(verdictTitles);
    for (const qint64 lines : plan.sizes) {
        openings << measure(lines, plan.rounds);
        verdicts << addOpening(plan.bars, openings.constLast());
    }
    return verdicts << reportGrowth(plan.bars["open-growth"], openings, plan.rounds);
}
