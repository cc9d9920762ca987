#include "report/programs.h"
#include "report/scan_file.h"
#include "report/sections.h"
#include "report/table.h"

#include <algorithm>

namespace {

struct Step {
    const char* name;
    const char* before; // the steps whose time this one's holds, parted by blanks
    const char* what;
};

constexpr Step steps[] = {
    {"read", "", "reading the bytes"},
    {"blocks", "read", "blocks of whole lines: encoding, carriage returns, the last line end"},
    {"fields", "blocks", "finding delimiters and line ends"},
    {"lines", "fields", "going through lines, taking three fields"},
    {"numbers", "lines", "position and p-value"},
    {"logarithm", "", "logarithm"},
    {"scan", "numbers logarithm", "labels, lists, layout on the genome axis"},
    {"geometry", "", "range and scale of the view"},
    {"genome", "", "drawing"},
};

void addStep(const QString& what, double seconds, double whole, qint64 lines) {
    Table::addRow({what, toldSeconds(seconds),
                   QString::number(1e9 * seconds / static_cast<double>(lines), 'f', 1) + " ns",
                   QStringLiteral("%1 %").arg(100.0 * seconds / whole, 0, 'f', 0)});
}

qint64 mainSize(const QList<qint64>& sizes) {
    constexpr qint64 usual = 10'000'000;
    return sizes.contains(usual) ? usual : sizes.constLast();
}

} // namespace

void reportSteps(const Extent& extent) {
    const qint64 lines = mainSize(extent.sizes);
    const ScanFile file(plainLayout(), lines);
    QMap<QString, Samples> samples;
    for (int round = 0; round < extent.rounds; ++round) {
        samples["open"].add(runWindow({file.path()})["open"]);
        const Told parts = runParts({"steps", file.path()});
        for (const Step& step : steps)
            samples[step.name].add(parts[step.name]);
    }
    const double whole = samples["open"].median();
    const Table table(
        {QStringLiteral("opening %1 lines").arg(lines), "median", "per line", "share"});
    double rest = whole;
    for (const Step& step : steps) {
        double seconds = samples[step.name].median();
        for (const QString& before :
             QString::fromLatin1(step.before).split(u' ', Qt::SkipEmptyParts))
            seconds -= samples[before].median();
        addStep(QString::fromLatin1(step.what), seconds, whole, lines);
        rest -= seconds;
    }
    addStep("the rest: window, picture on the window", rest, whole, lines);
    addStep("open", whole, whole, lines);
}
