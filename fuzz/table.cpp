// A saved table: as the toolkit's text stream would write it, byte for byte, and read back as the
// points that were saved. Input: label, points.

#include "finding.h"
#include "point_table.h"
#include "points_input.h"
#include "support/reading.h"

#include <QBuffer>
#include <QTextStream>
#include <algorithm>
#include <cmath>

namespace {

QByteArray written(const Points& points, const QString& label) {
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    mustHold(writePointTable(device, points, label), "writing");
    return device.data();
}

QByteArray plainlyWritten(const Points& points, const QString& label) {
    QByteArray bytes;
    QTextStream stream(&bytes);
    stream.setEncoding(QStringConverter::System);
    stream << "Chr\tPosition\tP\t-log10(P)\n";
    for (qsizetype i = 0; i < points.positions.size(); ++i)
        stream << label << '\t' << points.positions[i] << '\t'
               << 1.0 / std::pow(10.0, points.values[i]) << '\t' << points.values[i] << '\n';
    stream.flush();
    return bytes;
}

// A p-value too small for any number is written as 0, which a reader skips.
QList<int> positionsThatCount(const Points& points) {
    QList<int> positions;
    for (qsizetype i = 0; i < points.positions.size(); ++i)
        if (1.0 / std::pow(10.0, points.values[i]) != 0.0)
            positions.append(points.positions[i]);
    return positions;
}

void checkReadBack(const QByteArray& table, const Points& points, const QString& label) {
    const QList<int> positions = positionsThatCount(points);
    const Result<GenomeScan> scanned = scan(table, 64);
    const Result<Points> loaded = load(table, label, 64);
    if (positions.size() < 2) {
        mustHold(told(scanned) == told(Fault{FaultCode::TooFewGenomePoints}), "too few points", {},
                 told(scanned));
        return;
    }
    const auto* scan = std::get_if<GenomeScan>(&scanned);
    mustHold(scan && scan->chromosomes.size() == 1 && scan->chromosomes[0].label == label &&
                 scan->points.positions.size() == positions.size(),
             "table scanned", label, told(scanned));
    const auto* load = std::get_if<Points>(&loaded);
    mustHold(load && load->positions == positions, "table loaded", {}, told(loaded));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    QString label = input.shortText();
    // No label that was read holds a line end, and one with a delimiter in it can't be told apart.
    for (const char16_t end : {u'\n', u'\r', u'\t'})
        label.remove(end);
    const Points points = pointsFrom(input, 1000);
    const QByteArray table = written(points, label);
    const QByteArray expected = plainlyWritten(points, label);
    mustHold(table == expected, "table", QString::fromUtf8(expected), QString::fromUtf8(table));
    checkReadBack(table, points, label);
    return 0;
}
