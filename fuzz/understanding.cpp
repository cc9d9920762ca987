#include "understanding.h"

#include "finding.h"
#include "plain_header.h"
#include "plain_refusal.h"
#include "table_format.h"

#include <variant>

namespace {

QString textOf(const Understanding& table) {
    const TableFormat& format = table.format;
    const ColumnChoice& columns = table.columns;
    QString text = QStringLiteral("separator %1, header %2, comma %3")
                       .arg(static_cast<int>(format.separator))
                       .arg(format.headerLine)
                       .arg(format.decimalComma);
    for (const int column : {columns.chromosome, columns.position, columns.joined, columns.p,
                             columns.logP, columns.name, columns.test, columns.format})
        text += QStringLiteral(" %1").arg(column);
    for (const QByteArray& title : format.titles)
        text += u'|' + QString::fromLatin1(title);
    return text;
}

QString textOf(const plain::Table& table) {
    const plain::Columns& columns = table.columns;
    QString text = QStringLiteral("separator %1, header %2, comma %3")
                       .arg(static_cast<int>(table.separator))
                       .arg(table.header + 1)
                       .arg(table.decimalComma);
    for (const int column : {columns.chromosome, columns.position, columns.joined, columns.p,
                             columns.log, columns.name, columns.test, columns.format})
        text += QStringLiteral(" %1").arg(column);
    for (const QString& title : table.titles)
        text += u'|' + title;
    return text;
}

using Findings = std::variant<QString, RefusalCode>;

Findings plainly(const QStringList& lines, const PrepareOptions& options) {
    try {
        return textOf(plain::findTable(lines, options));
    } catch (const plain::Failure& failure) {
        return failure.code;
    }
}

Findings quickly(const QStringList& lines, const PrepareOptions& options) {
    const QByteArray head = lines.join(u'\n').toLatin1() + '\n';
    const auto result =
        understand({head.constData(), static_cast<size_t>(head.size())}, true, options);
    if (const auto* refusal = std::get_if<Refusal>(&result))
        return refusal->code;
    return textOf(std::get<Understanding>(result));
}

bool isSame(const Findings& a, const Findings& b) {
    const auto* code = std::get_if<RefusalCode>(&a);
    const auto* other = std::get_if<RefusalCode>(&b);
    return code && other ? plain::isSameRefusal(*code, *other) : a == b;
}

QString textOf(const Findings& findings) {
    if (const auto* code = std::get_if<RefusalCode>(&findings))
        return QStringLiteral("refusal %1").arg(static_cast<int>(*code));
    return std::get<QString>(findings);
}

} // namespace

void checkUnderstanding(const QByteArray& table, const PrepareOptions& options) {
    const QStringList lines = plain::linesOf(table);
    const Findings expected = plainly(lines, options), got = quickly(lines, options);
    mustHold(isSame(expected, got), "the same understanding", textOf(expected), textOf(got));
}
