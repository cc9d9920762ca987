#include "support/reading.h"

#include "association_file.h"
#include "chromosome_load.h"
#include "plain_reader.h"

#include <QBuffer>
#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {

// Opens the file in memory and hands it to `read`, or tells why it could not be opened.
template <typename Outcome, typename Read>
Result<Outcome> readWith(Read read, const QByteArray& bytes, qsizetype blockSize) {
    QBuffer device;
    device.setData(bytes);
    const auto openAndRead = [&](AssociationFile file) -> Result<Outcome> {
        if (const std::optional<Fault> fault = file.open())
            return *fault;
        return read(file);
    };
    return blockSize == defaultBlockSize ? openAndRead(AssociationFile(device))
                                         : openAndRead(AssociationFile(device, blockSize));
}

bool isSameValue(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

QString toldValue(double value) {
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

} // namespace

Result<GenomeScan> scan(const QByteArray& file, qsizetype blockSize) {
    return readWith<GenomeScan>([](AssociationFile& opened) { return scanGenome(opened); }, file,
                                blockSize);
}

Result<Points> load(const QByteArray& file, const QString& label, qsizetype blockSize) {
    return readWith<Points>([&](AssociationFile& opened) { return loadChromosome(opened, label); },
                            file, blockSize);
}

Result<GenomeScan> plainScan(const QByteArray& file) {
    QBuffer device;
    device.setData(file);
    return plain::scanGenome(device);
}

Result<Points> plainLoad(const QByteArray& file, const QString& label) {
    QBuffer device;
    device.setData(file);
    return plain::loadChromosome(device, label);
}

QString told(const Points& points) {
    QStringList positions, values;
    for (const int position : points.positions)
        positions << QString::number(position);
    for (const double value : points.values)
        values << toldValue(value);
    return positions.join(u' ') + QStringLiteral(" = ") + values.join(u' ');
}

QString told(const GenomeScan& scan) {
    return scan.chromosomes.tags.join(u'|') + QStringLiteral(": ") + told(scan.points);
}

QString told(Fault fault) {
    return message(fault);
}

bool isSame(const Points& a, const Points& b) {
    return a.positions == b.positions && std::equal(a.values.begin(), a.values.end(),
                                                    b.values.begin(), b.values.end(), isSameValue);
}

bool isSame(const GenomeScan& a, const GenomeScan& b) {
    return a.chromosomes == b.chromosomes && isSame(a.points, b.points);
}

bool isSame(Fault a, Fault b) {
    return a == b;
}
