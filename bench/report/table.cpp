#include "report/table.h"

#include <cstdio>

namespace {

int missed = 0;

} // namespace

Table::Table(const QStringList& titles) {
    std::puts("");
    addRow(titles);
    addRow(QStringList(titles.size(), QStringLiteral("---")));
}

void Table::addRow(const QStringList& cells) {
    std::printf("| %s |\n", qUtf8Printable(cells.join(QStringLiteral(" | "))));
    std::fflush(stdout);
}

QString verdict(bool isMet) {
    missed += isMet ? 0 : 1;
    return isMet ? QStringLiteral("met") : QStringLiteral("**not met**");
}

int barsMissed() {
    return missed;
}

QString times(double ratio) {
    return QString::number(ratio, 'f', ratio < 20 ? 1 : 0) + " x";
}
