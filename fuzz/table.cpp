// A saved table: byte for byte what the reference writes, and read back as the points that were
// saved. Input: label, points.

#include "finding.h"
#include "plain_table.h"
#include "point_table.h"
#include "points_input.h"
#include "support/reading.h"

#include <QBuffer>
#include <cmath>

namespace {

QByteArray written(const Points& points, const QString& label) {
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    mustHold(writePointTable(device, points, label), "writing");
    return device.data();
}

// A p-value too small for a double is written as 0, which a reader skips.
QList<int> positionsReadBack(const Points& points) {
    QList<int> positions;
    for (qsizetype i = 0; i < points.positions.size(); ++i)
        if (1.0 / std::pow(10.0, points.values[i]) != 0.0)
            positions.append(points.positions[i]);
    return positions;
}

void checkReadBack(const QByteArray& table, const Points& points, const QString& label) {
    const QList<int> positions = positionsReadBack(points);
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
    // A label from a file holds no line end. One with a tab would not be read back as one field.
    for (const char16_t end : {u'\n', u'\r', u'\t'})
        label.remove(end);
    const Points points = pointsFrom(input, 1000);
    const QByteArray table = written(points, label);
    const QByteArray expected = plain::table(points, label);
    mustHold(table == expected, "table", QString::fromUtf8(expected), QString::fromUtf8(table));
    checkReadBack(table, points, label);
    return 0;
}
