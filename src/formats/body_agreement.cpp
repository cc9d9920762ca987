#include "body_agreement.h"

#include "line_faults.h"
#include "p_value.h"
#include "position_text.h"
#include "title_table.h"
#include "titles.h"

#include <QSet>
#include <algorithm>

namespace {

qsizetype fieldCount(const HeadTable& table, const HeadLine& line) {
    QList<QByteArray> fields = table.fields(line);
    while (fields.size() > table.titles().size() && fields.last().isEmpty())
        fields.removeLast();
    return fields.size();
}

bool isNumber(const QByteArray& text) {
    double number = 0.0;
    return readNumber(viewOf(text), false, number);
}

bool isDecimalCommaIn(const QByteArray& text) {
    return text.contains(',') && (text.startsWith('0') || !isGrouped(text));
}

// Numbers without a point, of which some have a comma that parts no thousands.
bool isOfDecimalCommas(const QList<QByteArray>& values) {
    return std::any_of(values.begin(), values.end(), isDecimalCommaIn) &&
           std::all_of(values.begin(), values.end(), [](const QByteArray& text) {
               return !text.contains('.') &&
                      readPValue(viewOf(text), true).kind == PValue::Kind::Number;
           });
}

constexpr qsizetype linesRead = 1'000; // in search of decimal commas

bool hasColumnOfDecimalCommas(const HeadTable& table) {
    const auto lines = table.body().first(std::min(linesRead, table.body().size()));
    if (std::none_of(lines.begin(), lines.end(), [](const HeadLine& line) {
            return line.text.find(',') != std::string_view::npos;
        }))
        return false;
    for (int column = 0; column < table.columnCount(); ++column)
        if (isOfDecimalCommas(table.values(column, linesRead)))
            return true;
    return false;
}

bool hasCommaOrNoPoint(const HeadTable& table) {
    bool hasPoint = false;
    for (const HeadLine& line : table.body().first(std::min(linesCompared, table.body().size())))
        for (QByteArray field : table.fields(line)) {
            hasPoint = hasPoint || (field.contains('.') && isNumber(field));
            if (field.count(',') == 1 && isNumber(field.replace(",", ".")))
                return true;
        }
    return !hasPoint;
}

} // namespace

bool endsInList(const QList<QByteArray>& titles) {
    return std::any_of(titles.begin(), titles.end(), [](const QByteArray& title) {
        return normalTitle(viewOf(title)).contains(bytesOf(title_table::listTitlePiece));
    });
}

Agreement agreement(const HeadTable& table, bool isWhole) {
    const qsizetype titles = table.titles().size();
    qsizetype equal = 0, shorter = 0, oneMore = 0, longer = 0;
    auto lines = table.body().first(std::min(linesCompared, table.body().size()));
    if (isWhole && lines.size() > 1 && fieldCount(table, table.body().last()) < titles &&
        lines.size() == table.body().size())
        lines.removeLast(); // the file may be cut short there
    for (const HeadLine& line : lines) {
        const qsizetype count = fieldCount(table, line);
        const bool isEqual = count == titles || (count > titles && endsInList(table.titles()));
        equal += isEqual ? 1 : 0;
        shorter += count < titles ? 1 : 0;
        longer += !isEqual && count > titles ? 1 : 0;
        oneMore += !isEqual && count == titles + 1 ? 1 : 0;
    }
    if (oneMore > 0 && oneMore == lines.size())
        return Agreement::OneFieldMore;
    const bool areFew = mostFields(table.format()) != anyFieldCount && longer * 10 <= lines.size();
    return (longer == 0 || areFew) && (equal > shorter || lines.isEmpty()) ? Agreement::Agrees
                                                                           : Agreement::Differs;
}

bool startWithRowNames(const HeadTable& table) {
    const QList<QByteArray> names = table.column(0, linesCompared);
    const auto isNumbered = [&] {
        for (qsizetype i = 1; i < names.size(); ++i)
            if (names[i].toLongLong() != names[i - 1].toLongLong() + 1)
                return false;
        return isNumber(names.first());
    };
    const auto isQuoted = [](const HeadLine& line) { return line.text.substr(0, 1) == "\""; };
    const auto isMarker = [](const QByteArray& name) {
        return name.startsWith("rs") && isNumber(name.mid(2));
    };
    return isNumbered() || std::all_of(table.body().begin(), table.body().end(), isQuoted) ||
           std::all_of(names.begin(), names.end(), isMarker);
}

bool startWithNumberedRowNames(const HeadTable& table) {
    QSet<QByteArray> names;
    const auto lines = table.body().first(std::min(linesCompared, table.body().size()));
    for (const HeadLine& line : lines) {
        const QList<QByteArray> fields = table.fields(line);
        const QByteArray name = fields.value(0);
        const auto quotes = std::count(line.text.begin(), line.text.end(), '"');
        const bool isQuotedAlone = line.text.substr(0, 1) == "\"" && quotes < 2 * fields.size();
        if (!isQuotedAlone || name.toLongLong() < 1 || names.contains(name))
            return false;
        names.insert(name);
    }
    return lines.size() > 1;
}

bool hasNumbers(const QList<QByteArray>& titles) {
    return std::any_of(titles.begin(), titles.end(), isNumber);
}

bool hasDecimalComma(const HeadTable& table) {
    switch (table.format().separator) {
    case Separator::Comma:
        return false;
    case Separator::Semicolon:
        return hasCommaOrNoPoint(table);
    default:
        return hasColumnOfDecimalCommas(table);
    }
}

bool agreesWithDecimalComma(const HeadTable& table, const QList<int>& columns) {
    bool hasPoint = false;
    for (const int column : columns) {
        const QList<QByteArray> values = table.values(column, linesRead);
        if (isOfDecimalCommas(values))
            return true;
        hasPoint =
            hasPoint || std::any_of(values.begin(), values.end(), [](const QByteArray& text) {
                return text.contains('.') && isNumber(text);
            });
    }
    return !hasPoint;
}
