#include "point_table.h"

#include "replaced_file.h"

#include <QIODevice>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {

void appendRow(const QByteArray& label, int position, double value, QByteArray& rows) {
    constexpr int longestPosition = 11, others = 3;
    char numbers[longestPosition + rowNumbersRoom + others];
    char* at = numbers;
    *at++ = '\t';
    at = std::to_chars(at, std::end(numbers), position).ptr;
    *at++ = '\t';
    at = writeRowNumbers(value, at);
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

char* writeRowNumbers(double value, char* at) {
    at = writeNumber(1.0 / std::pow(10.0, value), at);
    *at++ = '\t';
    return writeNumber(value, at);
}

bool writePointTable(QIODevice& device, const Points& points, const QString& label) {
    constexpr qsizetype blockSize = 128 * 1024;
    const QByteArray labelBytes = label.toLocal8Bit();
    QByteArray block(tableTitles);
    block += '\n';
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
