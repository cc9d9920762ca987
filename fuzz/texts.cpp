// The texts that users type and the plots show, against the reference; file names against their
// rules; and UTF-16 to the reader's bytes and back. Input: a number, a short text, another text.

#include "finding.h"
#include "input.h"
#include "plain_texts.h"
#include "plot_texts.h"
#include "point_table.h"
#include "utf8.h"

#include <QStringList>

namespace {

void checkRange(const QString& first, const QString& second, int position) {
    const PositionRange expected = plain::highlightRange(first, second);
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
    mustHold(groupedInThrees(number) == plain::groupedInThrees(number), "grouped",
             plain::groupedInThrees(number), groupedInThrees(number));
    mustHold(spanText(0, number) == "|<-- " + plain::groupedInThrees(number) + " -->|", "span");
    checkNames(first);
    checkNames(second);
    checkUtf8(rest);
    return 0;
}
