#pragma once

#include <QStringList>

// The lines after a header that are neither empty nor comments, and their fields. The first 20 rows
// count, and a row after them says only that the table goes on.
namespace plain {

constexpr qsizetype linesCompared = 20;

// Whether the rows have as many fields as there are titles, though a few may be short. With a list
// at their end they may have more, and where `mayBeLong` says so, one in ten may too.
bool bodyAgrees(QList<QStringList> rows, qsizetype titles, bool endsInList, bool mayBeLong);

// Whether all rows have one field more than there are titles, as R writes the names of rows.
bool haveOneFieldMore(QList<QStringList> rows, qsizetype titles);

// Whether the first fields are names of rows: numbers one after the other, texts in quotes or
// marker names; or surely so: numbers in quotes, each another, before numbers without.
bool startWithRowNames(const QStringList& lines, const QList<QStringList>& rows);
bool startWithNumbersInQuotes(const QStringList& lines, const QList<QStringList>& rows);

} // namespace plain
