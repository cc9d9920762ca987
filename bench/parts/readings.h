#pragma once

#include "genome_scan.h"

#include <QString>

// A whole file, or the points of one chromosome, by the program's reader and by the reference's.
Result<GenomeScan> quickScan(const QString& fileName);
Result<GenomeScan> plainScan(const QString& fileName);
Result<Points> quickLoad(const QString& fileName, const QString& label);
Result<Points> plainLoad(const QString& fileName, const QString& label);

// Aborts the process on a fault.
template <typename T>
T valueOf(Result<T> result) {
    if (const Fault* fault = std::get_if<Fault>(&result))
        qFatal("%s", qPrintable(message(*fault)));
    return std::get<T>(std::move(result));
}
