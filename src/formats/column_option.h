#pragma once

#include "refusal.h"

#include <QByteArray>
#include <QList>
#include <optional>
#include <variant>

// The column, from 0, that an option names: by its title as it stands, else by its normal title,
// else by a number from 1. -1 where the option is not given. Refuses a column that is not there,
// naming the nearest titles, and a title that several columns have.
std::variant<int, Refusal> columnOf(const char* option, const std::optional<QByteArray>& text,
                                    const QList<QByteArray>& titles, int columnCount);

// The same for --where, without options: only its user can tell the value.
std::variant<int, Refusal> whereColumn(const QByteArray& text, const QList<QByteArray>& titles,
                                       int columnCount);

// What to add to a command line to name a column: "--p P_EUR", with a number where the title does
// not name it alone, and quotes where the shell needs them.
QByteArray optionFor(const char* option, const QList<QByteArray>& titles, int column);

// The word as a POSIX shell must be given it: as it is where that is safe, else in single quotes.
QByteArray shellQuoted(QByteArray text);

// `"P" (column 4)`, for messages; `column 4` without a title. Columns count from 0.
QString columnText(const QByteArray& title, int column);
QString columnText(const QList<QByteArray>& titles, int column);
