#include "support/reading.h"

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

ReadOptions optionsFor(qsizetype blockSize) {
    ReadOptions options;
    if (blockSize != defaultBlockSize)
        options.blockSize = blockSize;
    return options;
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
    QBuffer device;
    device.setData(file);
    return scanGenome(device, optionsFor(blockSize));
}

Result<Points> load(const QByteArray& file, const QString& label, qsizetype blockSize) {
    QBuffer device;
    device.setData(file);
    return loadChromosome(device, label, optionsFor(blockSize));
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
    QStringList labels;
    for (const Chromosome& chromosome : scan.chromosomes)
        labels << chromosome.label;
    return labels.join(u'|') + QStringLiteral(": ") + told(scan.points);
}

QString told(const Fault& fault) {
    switch (fault.code) {
    case FaultCode::CannotOpenFile:
        return QStringLiteral("unreadable");
    case FaultCode::UnknownDelimiter:
        return QStringLiteral("no delimiter");
    case FaultCode::TooFewColumns:
        return QStringLiteral("few columns");
    case FaultCode::IncorrectColumns:
        return QStringLiteral("wrong columns");
    case FaultCode::NonNumericPValue:
        return QStringLiteral("bad p-value");
    case FaultCode::NonIntegerPosition:
        return QStringLiteral("bad position");
    case FaultCode::TooFewGenomePoints:
        return QStringLiteral("few genome points");
    case FaultCode::TooFewChromosomePoints:
        return QStringLiteral("few chromosome points");
    }
    Q_UNREACHABLE();
}

QString placeOf(const Fault& fault) {
    return QStringLiteral("line %1, column %2: %3").arg(fault.line).arg(fault.column, fault.text);
}

bool isSame(const Points& a, const Points& b) {
    return a.positions == b.positions && std::equal(a.values.begin(), a.values.end(),
                                                    b.values.begin(), b.values.end(), isSameValue);
}

bool isSame(const GenomeScan& a, const GenomeScan& b) {
    return a.chromosomes == b.chromosomes && isSame(a.points, b.points);
}

bool isSame(const Fault& a, const Fault& b) {
    return a == b;
}
