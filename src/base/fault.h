#pragma once

#include <QLatin1String>
#include <variant>

// Every way in which an association file can be unfit. Readers return a fault; whoever called them
// decides what becomes of it.
enum class Fault {
    CannotOpenFile, // also a file that stops being readable half-way
    UnknownDelimiter,
    TooFewColumns,
    IncorrectColumns, // a title was not found, or a line is too short to hold all three columns
    NonNumericPValue,
    NonIntegerPosition,
    TooFewGenomePoints,
    TooFewChromosomePoints,
};

// The one text by which users know `fault`, without a line end.
QLatin1String message(Fault fault);

// What was read, or why it could not be.
template <typename T>
using Result = std::variant<T, Fault>;
