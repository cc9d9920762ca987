#include "report/programs.h"
#include "report/scan_file.h"
#include "report/sections.h"
#include "report/table.h"

namespace {

struct Step {
    const char* name;
    const char* included; // the steps whose time its own time includes, separated by spaces
    const char* what;
};

constexpr Step steps[] = {
    {"read", "", "reading the bytes"},
    {"blocks", "read", "blocks of whole lines: encoding, carriage returns, the last line end"},
    {"fields", "blocks", "finding delimiters and line ends"},
    {"lines", "fields", "walking the lines, taking three fields"},
    {"numbers", "lines", "position and p-value"},
    {"logarithm", "", "logarithm"},
    {"scan", "numbers logarithm", "labels, lists, layout on the genome axis"},
    {"geometry", "", "range and scale of the view"},
    {"genome", "", "drawing"},
};

void addStep(const QString& what, double seconds, double whole, qint64 lines) {
    addRow({what, secondsText(seconds),
            QString::number(1e9 * seconds / static_cast<double>(lines), 'f', 1) + " ns",
            QStringLiteral("%1 %").arg(100.0 * seconds / whole, 0, 'f', 0)});
}

} // namespace

QList<Verdict> reportSteps(const Plan& plan) {
    const qint64 lines = plan.upTo(10'000'000);
    const ScanFile file(plainLayout(), lines);
    const QList<Series> measured =
        inTurns(plan.rounds, {window({file.path()}), parts({"steps", file.path()})});
    const double whole = measured[0]["open"].median();
    startTable({"open " + linesText(lines), "median", "per line", "share"});
    double rest = whole;
    for (const Step& step : steps) {
        double seconds = measured[1][step.name].median();
        for (const QString& part : QString(step.included).split(u' ', Qt::SkipEmptyParts))
            seconds -= measured[1][part].median();
        addStep(step.what, seconds, whole, lines);
        rest -= seconds;
    }
    addStep("the rest: window, showing the picture", rest, whole, lines);
    addStep("open", whole, whole, lines);
    return {};
}
