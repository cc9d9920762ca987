// The texts that users type and the program shows, against their rules as one would tell them; and
// text from UTF-16 to the reader's bytes and back. Input: a number, a short text, and another text.

#include "finding.h"
#include "input.h"
#include "plot_texts.h"
#include "point_table.h"
#include "utf8.h"

#include <QStringList>

namespace {

PositionRange plainRange(const QString& first, const QString& second) {
    const QStringList parts = first.split("-", Qt::KeepEmptyParts, Qt::CaseSensitive);
    bool isLow = false, isHigh = false;
    PositionRange range;
    if (parts.size() == 2) {
        range.low = parts[0].toInt(&isLow, 10);
        range.high = parts[1].toInt(&isHigh, 10);
    } else {
        range.low = first.toInt(&isLow, 10);
        range.high = second.toInt(&isHigh, 10);
    }
    if (!isLow || !isHigh)
        range.low = range.high = 0;
    return range;
}

QString plainGrouped(int number) {
    const QString digits = QString::number(number, 10);
    QString grouped;
    int counter = 0;
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        ++counter;
        grouped.prepend(digits[i]);
        if (counter == 3 && i >= 1) {
            grouped.prepend(u',');
            counter = 0;
        }
    }
    return grouped;
}

void checkRange(const QString& first, const QString& second, int position) {
    const PositionRange expected = plainRange(first, second);
    const PositionRange got = highlightRange(first, second);
    mustHold(got.low == expected.low && got.high == expected.high, "range");
    mustHold(got.contains(position) == (expected.low <= position && position <= expected.high),
             "point in range");
}

void checkNames(const QString& name) {
    const QString table = tableName(name);
    mustHold(table == name || table == name + ".txt", "table's name", name, table);
    mustHold(table.endsWith(".txt", Qt::CaseSensitive), "table's suffix", name, table);
    const QString image = table.split(".", Qt::KeepEmptyParts, Qt::CaseSensitive)[0] + ".png";
    mustHold(imageName(table) == image, "image's name", image, imageName(table));
}

void checkUtf8(const QByteArray& bytes) {
    const QString text(reinterpret_cast<const QChar*>(bytes.constData()), bytes.size() / 2);
    QByteArray coded;
    appendUtf8(text, coded);
    const std::string_view view(coded.constData(), static_cast<std::size_t>(coded.size()));
    mustHold(fromUtf8(view) == text, "text to bytes and back", text, fromUtf8(view));
    fromUtf8({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const int number = input.number<std::int32_t>();
    const QString first = input.shortText();
    const QByteArray rest = input.rest();
    const QString second = QString::fromUtf8(rest);
    checkRange(first, second, number);
    checkRange(QString::number(number) + u'-' + first, second, number);
    mustHold(groupedInThrees(number) == plainGrouped(number), "grouped", plainGrouped(number),
             groupedInThrees(number));
    mustHold(spanText(0, number) == "|<-- " + plainGrouped(number) + " -->|", "span");
    checkNames(first);
    checkNames(second);
    checkUtf8(rest);
    return 0;
}
