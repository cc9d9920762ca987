#include "output/point_table.h"

#include "output/replaced_file.h"

#include <QIODevice>
#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

// As the toolkit's text stream writes it: six significant digits, the shorter of fixed and
// scientific form. The library's general form is the same, many times quicker, but for numbers that
// lie in the very middle between two texts, which it rounds to even and the toolkit up. Such a
// number is an odd multiple n of 1 / (2 * 10^k), n below 2 * 10^6, and a double only where 5^k
// divides n: so k is at most 9, and the number a multiple of 1/1024.
char* writeReal(double number, char* at, char* end) {
    const double scaled = number * 1024.0;
    if (std::isfinite(number) && scaled != std::trunc(scaled))
        return std::to_chars(at, end, number, std::chars_format::general, 6).ptr;
    const QByteArray text = QByteArray::number(number, 'g', 6);
    return std::copy(text.begin(), text.end(), at);
}

void appendRow(const QByteArray& label, int position, double value, QByteArray& rows) {
    char numbers[64]; // 11 and two times 13 characters at most, and what stands between them
    char* const end = numbers + sizeof numbers;
    char* at = numbers;
    *at++ = '\t';
    at = std::to_chars(at, end, position).ptr;
    *at++ = '\t';
    at = writeReal(1.0 / std::pow(10.0, value), at, end);
    *at++ = '\t';
    at = writeReal(value, at, end);
    *at++ = '\n';
    rows.append(label);
    rows.append(numbers, at - numbers);
}

} // namespace

QString tableName(const QString& name) {
    return name.endsWith(QLatin1String(".txt")) ? name : name + QLatin1String(".txt");
}

QString imageName(const QString& tableName) {
    return tableName.section(u'.', 0, 0) + QLatin1String(".png");
}

bool writePointTable(QIODevice& device, const Points& points, const QString& label) {
    constexpr qsizetype blockSize = 128 * 1024;
    const QByteArray labelBytes = label.toLocal8Bit();
    QByteArray block("Chr\tPosition\tP\t-log10(P)\n");
    for (qsizetype i = 0; i < points.positions.size(); ++i) {
        appendRow(labelBytes, points.positions[i], points.values[i], block);
        if (block.size() < blockSize)
            continue;
        if (device.write(block) != block.size())
            return false;
        block.resize(0);
    }
    return device.write(block) == block.size();
}

bool savePointTable(const QString& fileName, const Points& points, const QString& label) {
    return replaceFile(fileName, QIODevice::Text,
                       [&](QIODevice& device) { return writePointTable(device, points, label); });
}
