#pragma once

#include "genome_scan.h"
#include "points.h"

#include <QByteArray>
#include <QString>

// Reads whole files from memory and puts the outcome into one text, so that a comparison that fails
// shows both sides: a fault as "bad p-value", a scan as "A|B: 1 11 12 = 3 2 1" (the chromosomes'
// labels, the points' genome coordinates and values), a load as "100 200 = 3 2".

constexpr qsizetype defaultBlockSize = 0; // leave it to the reader

Result<GenomeScan> scan(const QByteArray& file, qsizetype blockSize = defaultBlockSize);
Result<Points> load(const QByteArray& file, const QString& label,
                    qsizetype blockSize = defaultBlockSize);

// The same by the plain reader.
Result<GenomeScan> plainScan(const QByteArray& file);
Result<Points> plainLoad(const QByteArray& file, const QString& label);

QString told(const Points& points);
QString told(const GenomeScan& scan);
QString told(const Fault& fault);

// Where a fault is: "line 3, column pval: x".
QString placeOf(const Fault& fault);

template <typename T>
QString told(const Result<T>& result) {
    return std::visit([](const auto& outcome) { return told(outcome); }, result);
}

// Equal to the last bit; values that are not a number equal each other.
bool isSame(const Points& a, const Points& b);
bool isSame(const GenomeScan& a, const GenomeScan& b);
bool isSame(const Fault& a, const Fault& b);

template <typename T>
bool isSame(const Result<T>& a, const Result<T>& b) {
    return std::visit(
        [](const auto& x, const auto& y) {
            if constexpr (std::is_same_v<decltype(x), decltype(y)>)
                return isSame(x, y);
            else
                return false;
        },
        a, b);
}
