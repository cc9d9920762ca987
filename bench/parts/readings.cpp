#include "parts/readings.h"

#include "association_file.h"
#include "chromosome_load.h"
#include "plain_reader.h"

#include <QFile>

Result<GenomeScan> quickScan(const QString& fileName) {
    QFile device(fileName);
    AssociationFile file(device);
    if (const std::optional<Fault> fault = file.open())
        return *fault;
    return scanGenome(file);
}

Result<GenomeScan> plainScan(const QString& fileName) {
    QFile device(fileName);
    return plain::scanGenome(device);
}

Result<Points> quickLoad(const QString& fileName, const QString& label) {
    QFile device(fileName);
    AssociationFile file(device);
    if (const std::optional<Fault> fault = file.open())
        return *fault;
    return loadChromosome(file, label);
}

Result<Points> plainLoad(const QString& fileName, const QString& label) {
    QFile device(fileName);
    return plain::loadChromosome(device, label);
}
