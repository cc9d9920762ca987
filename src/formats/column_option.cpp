#include "column_option.h"

#include "edit_distance.h"
#include "titles.h"

#include <algorithm>

namespace {

QList<int> columnsWhere(const QList<QByteArray>& titles, const auto& passes) {
    QList<int> columns;
    for (int i = 0; i < titles.size(); ++i)
        if (passes(titles[i]))
            columns += i;
    return columns;
}

QList<QByteArray> nearestTitles(const QByteArray& text, QList<QByteArray> titles) {
    const QByteArray normal = normalTitle(viewOf(text));
    std::stable_sort(titles.begin(), titles.end(), [&](const QByteArray& a, const QByteArray& b) {
        return editDistance(normal, normalTitle(viewOf(a))) <
               editDistance(normal, normalTitle(viewOf(b)));
    });
    return titles.first(std::min<qsizetype>(3, titles.size()));
}

Refusal unknownColumn(const char* option, const QByteArray& text, const QList<QByteArray>& titles,
                      int columnCount) {
    bool isNumber = false;
    text.toInt(&isNumber);
    Refusal refusal{RefusalCode::UnknownColumn, {}, {}, {}};
    if (!isNumber)
        refusal.candidates = nearestTitles(text, titles);
    refusal.message =
        QStringLiteral("%1 %2: there is no such column among the %3 of this table.")
            .arg(QLatin1String(option), QString::fromUtf8(text), QString::number(columnCount));
    for (const QByteArray& title : refusal.candidates)
        refusal.options += optionFor(option, titles, int(titles.indexOf(title)));
    if (!refusal.candidates.isEmpty())
        refusal.message += QStringLiteral(" The nearest titles: %1.")
                               .arg(QString::fromUtf8(refusal.candidates.join(", ")));
    return refusal;
}

Refusal severalColumns(const char* option, const QByteArray& text, const QList<int>& columns,
                       const QList<QByteArray>& titles) {
    Refusal refusal{RefusalCode::UnknownColumn, {}, {}, {}};
    refusal.message =
        QStringLiteral("%1 %2: several columns have this title. Give a number instead.")
            .arg(QLatin1String(option), QString::fromUtf8(text));
    for (const int column : columns) {
        refusal.candidates += titles[column];
        refusal.options += QByteArray(option) + ' ' + QByteArray::number(column + 1);
    }
    return refusal;
}

bool isPlainArgument(const QByteArray& text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               QByteArrayView("_.:+-/,@%=").contains(c);
    });
}

} // namespace

QByteArray shellQuoted(QByteArray text) {
    if (isPlainArgument(text))
        return text;
    return '\'' + text.replace("'", "'\\''") + '\'';
}

std::variant<int, Refusal> columnOf(const char* option, const std::optional<QByteArray>& text,
                                    const QList<QByteArray>& titles, int columnCount) {
    if (!text)
        return -1;
    const QByteArray bare = bareTitle(viewOf(*text));
    const QByteArray normal = normalTitle(viewOf(*text));
    QList<int> columns =
        columnsWhere(titles, [&](const QByteArray& title) { return title == bare; });
    bool isNumber = false;
    const int number = bare.toInt(&isNumber);
    if (columns.isEmpty() && isNumber && number >= 1 && number <= columnCount)
        return number - 1;
    if (columns.isEmpty() && !normal.isEmpty())
        columns = columnsWhere(
            titles, [&](const QByteArray& title) { return normalTitle(viewOf(title)) == normal; });
    if (columns.size() == 1)
        return columns.first();
    if (columns.isEmpty())
        return unknownColumn(option, *text, titles, columnCount);
    return severalColumns(option, *text, columns, titles);
}

std::variant<int, Refusal> whereColumn(const QByteArray& text, const QList<QByteArray>& titles,
                                       int columnCount) {
    auto column = columnOf("--where", text, titles, columnCount);
    if (Refusal* const refusal = std::get_if<Refusal>(&column))
        refusal->options.clear();
    return column;
}

QByteArray optionFor(const char* option, const QList<QByteArray>& titles, int column) {
    const QByteArray title = titles.value(column);
    bool isNumber = false;
    title.toInt(&isNumber);
    if (title.isEmpty() || isNumber || title.startsWith('-') || titles.count(title) > 1)
        return QByteArray(option) + ' ' + QByteArray::number(column + 1);
    return QByteArray(option) + ' ' + shellQuoted(title);
}

QString columnText(const QByteArray& title, int column) {
    const QString number = QString::number(column + 1);
    if (title.isEmpty())
        return QStringLiteral("column %1").arg(number);
    return QStringLiteral("\"%1\" (column %2)").arg(QString::fromUtf8(title), number);
}

QString columnText(const QList<QByteArray>& titles, int column) {
    return columnText(titles.value(column), column);
}
