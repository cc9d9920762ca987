#include "report/comparison.h"

#include "report/table.h"

QList<Verdict> compare(const Plan& plan, const QString& title, qint64 lines,
                       const QList<Comparison>& comparisons) {
    QList<Verdict> verdicts;
    QStringList titles = verdictTitles;
    titles[0] = title + ", " + linesText(lines);
    startTable(titles);
    for (const auto& [what, ours, other, timeBar, memoryBar] : comparisons) {
        if (!other.check.isEmpty() && !succeeds(other.check)) {
            addRow({what, "", other.name + ": skipped, not installed"});
            continue;
        }
        const QList<Series> measured = inTurns(plan.rounds, {ours.run, other.run});
        verdicts << addRatio(plan.bars[timeBar], what, lines, measured[0][ours.time],
                             {other.name, measured[1][other.time]});
        if (!memoryBar.isEmpty())
            verdicts << addBytes(plan.bars[memoryBar], what + ": peak memory", lines,
                                 measured[0]["memory"].maximum());
    }
    return verdicts;
}
