#pragma once

#include "genome_scan.h"

#include <QString>

// Whole files, and the points of one chromosome, read by the program's reader and the plain one.
Result<GenomeScan> quickScan(const QString& fileName);
Result<GenomeScan> plainScan(const QString& fileName);
Result<Points> quickLoad(const QString& fileName, const QString& label);
Result<Points> plainLoad(const QString& fileName, const QString& label);

// Ends the process where the file was at fault.
template <typename T>
T valueOf(Result<T> result) {
    if (const Fault* fault = std::get_if<Fault>(&result))
        qFatal("fault %d in line %lld", static_cast<int>(fault->code), fault->line);
    return std::get<T>(std::move(result));
}
