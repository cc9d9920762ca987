#include "report/programs.h"
#include "report/scan_file.h"
#include "report/sections.h"
#include "report/table.h"

namespace {

struct Redraw {
    const char* step; // of the window's driver
    const char* what;
    const char* plainPlot = "dots"; // the reference's plot of the same kind
};

// In this order each step has nearly all points before or after it.
constexpr Redraw redraws[] = {
    {"zoom-wide", "zoom to nearly all points"}, {"unzoom", "unzoom"},
    {"join", "check box 1: join", "joined"},    {"part", "check box 1: part"},
    {"lines-off", "check box 2: no lines"},     {"lines-on", "check box 2: lines"},
    {"zoom-narrow", "zoom to a few points"},    {"remove", "remove the few"}};

QStringList windowArguments(const QString& path) {
    QStringList arguments{path};
    for (const Redraw& redraw : redraws)
        arguments << redraw.step;
    return arguments;
}

// Either bar will do: the ratio, or a time below which no one notices the difference.
Verdict addRedraw(const Bars& bars, const Redraw& redraw, const Samples& seconds,
                  const Samples& plain, qint64 points) {
    const Bar bar = bars["redraw-vs-plain"];
    const Verdict ratio = bar.judge(redraw.what, bar.ratio(seconds, plain), points);
    const Verdict verdict = ratio.met == false
                                ? bars["redraw-time"].judge(redraw.what, seconds.median(), points)
                                : ratio;
    addRow(QStringList{redraw.what, secondsText(seconds), secondsText(plain)} + verdict.cells());
    return verdict;
}

} // namespace

QList<Verdict> reportRedraws(const Plan& plan) {
    const qint64 points = plan.upTo(1'000'000);
    ScanLayout layout = plainLayout();
    layout.name = "one_chromosome";
    layout.chromosomes = 1;
    const ScanFile file(layout, points);
    const QList<Series> measured =
        inTurns(plan.rounds,
                {window(windowArguments(file.path())), parts({"plain-redraw", file.path(), "1"}),
                 parts({"save", file.path(), "1", inWorkFolder("")})});
    startTable(QStringList{QStringLiteral("a chromosome of %1 points").arg(points), "Pelmark",
                           "one painter call per point"} +
               verdictTitles.mid(3));
    QList<Verdict> verdicts;
    for (const Redraw& redraw : redraws)
        verdicts << addRedraw(plan.bars, redraw, measured[0][redraw.step],
                              measured[1][redraw.plainPlot], points);
    return verdicts << addRatio(plan.bars["save-vs-stream"], "save a table of them", points,
                                measured[2]["save"], {"text stream", measured[2]["stream"]});
}
