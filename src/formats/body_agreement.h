#pragma once

#include "head_table.h"

// How many of the first lines after a header are compared with it.
inline constexpr qsizetype linesCompared = 20;

// Whether the first lines have as many fields as there are titles. Lines that are too short are
// faults of the table where they are few. A line that is too long says that the fields are parted
// in another way, unless it is dropped later and at most 1 in 10 is one.
enum class Agreement { Agrees, OneFieldMore, Differs };
Agreement agreement(const HeadTable& table, bool isWhole);

// Row names as R writes them have no title: consecutive numbers, quoted texts or marker names.
bool startWithRowNames(const HeadTable& table);

// Whether they surely are row names: different numbers in quotes, before numbers without quotes.
bool startWithNumberedRowNames(const HeadTable& table);

// Whether the last title stands for a list, so that lines have more fields than there are titles.
bool endsInList(const QList<QByteArray>& titles);

bool hasNumbers(const QList<QByteArray>& titles);

// In a table parted by semicolons a comma is the decimal point, unless its numbers have points.
// Between tabs or spaces it is where a column has decimal commas throughout.
bool hasDecimalComma(const HeadTable& table);

// Whether these columns of numbers let commas be decimal points: one of them has decimal commas
// throughout, or none has a decimal point. Otherwise the commas are those of a column of texts.
bool agreesWithDecimalComma(const HeadTable& table, const QList<int>& columns);
