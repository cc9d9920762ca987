#include "parts/readings.h"

#include "chromosome_load.h"
#include "plain_reader.h"

#include <QFile>

Result<GenomeScan> quickScan(const QString& fileName) {
    QFile device(fileName);
    return scanGenome(device);
}

Result<GenomeScan> plainScan(const QString& fileName) {
    QFile device(fileName);
    return plain::scanGenome(device);
}

Result<Points> quickLoad(const QString& fileName, const QString& label) {
    QFile device(fileName);
    return loadChromosome(device, label);
}

Result<Points> plainLoad(const QString& fileName, const QString& label) {
    QFile device(fileName);
    return plain::loadChromosome(device, label);
}
