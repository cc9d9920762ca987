#pragma once

#include "scan_table.h"

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

// A stretch of a chromosome, both ends included.
struct Region {
    QByteArray label;
    int first = 0; // base pairs
    int last = 0;
};

// Reads LABEL:FIRST-LAST, where commas may group the digits by three. Nothing where the text is not
// so written, or the region ends before it begins.
std::optional<Region> readRegion(std::string_view text);

// The place of a chromosome in the table: by its name, else by another spelling of it.
std::optional<size_t> chromosomeOf(const ScanTable& scan, const QByteArray& label);

// The lines of the markers in the region.
std::vector<qint64> linesIn(const ScanTable& scan, size_t chromosome, const Region& region);

// Reads names, one a line. Spaces around them and empty lines do not count.
std::variant<QList<QByteArray>, Refusal> readNames(const QString& path);

// The markers that a list names.
struct NameMatch {
    std::vector<qint64> lines;
    QList<QByteArray> notFound;
};

// Looks for the names of each list in the file that the table is of, which must have a column for
// them. Index-aligned with `lists`.
std::variant<std::vector<NameMatch>, Refusal> matchNames(const QString& path, const ScanTable& scan,
                                                         const QList<QList<QByteArray>>& lists);
