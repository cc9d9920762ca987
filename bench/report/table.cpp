#include "report/table.h"

#include <cstdio>

void startTable(const QStringList& titles) {
    std::puts("");
    addRow(titles);
    addRow(QStringList(titles.size(), "---"));
}

void addRow(const QStringList& cells) {
    std::printf("| %s |\n", qUtf8Printable(cells.join(" | ")));
    std::fflush(stdout);
}

Verdict addRatio(const Bar& bar, const QString& what, qint64 lines, const Samples& seconds,
                 const Timed& other) {
    const Verdict verdict = bar.judge(what, bar.ratio(seconds, other.seconds), lines);
    addRow(QStringList{what, secondsText(seconds), other.name + ' ' + secondsText(other.seconds)} +
           verdict.cells());
    return verdict;
}

Verdict addBytes(const Bar& bar, const QString& what, qint64 lines, double bytes) {
    const Verdict verdict = bar.judge(what, bytes, lines);
    addRow(QStringList{verdict.what, bytesText(bytes), ""} + verdict.cells());
    return verdict;
}
