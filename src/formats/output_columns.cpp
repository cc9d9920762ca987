#include "output_columns.h"

namespace {

QByteArray titleOf(const Understanding& table, int column) {
    return table.format.titles.value(column, "V" + QByteArray::number(column + 1));
}

} // namespace

int nameColumn(const ColumnChoice& columns) {
    return columns.isPrepared ? -1 : columns.name;
}

QList<int> otherColumns(const Understanding& table, const PrepareOptions& options) {
    const ColumnChoice& columns = table.columns;
    QList<int> others;
    if (!options.allColumns && !columns.isPrepared)
        return others;
    const int log = columns.p < 0 || columns.isPrepared ? columns.logP : -1;
    const int chromosome = columns.isPrepared ? 0 : columns.chromosome;
    const QList<int> written{chromosome, columns.position, columns.p, log, nameColumn(columns)};
    for (int column = 0; column < table.format.titles.size(); ++column)
        if (!written.contains(column))
            others.append(column);
    return others;
}

QByteArray outputHeader(const Understanding& table, const PrepareOptions& options) {
    QByteArray line = "Chr\tPosition\tP\t-log10(P)";
    if (const int name = nameColumn(table.columns); name >= 0)
        line += '\t' + titleOf(table, name);
    for (const int column : otherColumns(table, options))
        line += '\t' + titleOf(table, column);
    return options.lineNumbers ? line + "\tLine" : line;
}
