#pragma once

#include <QString>
#include <variant>

// The ways in which an association file can be unfit to be read.
enum class FaultCode {
    CannotOpenFile, // also one that stops being readable partway; `line` is then the last one read
    UnknownDelimiter,
    TooFewColumns,
    IncorrectColumns, // a title was not found, or a line is too short to hold all three columns
    NonNumericPValue,
    NonIntegerPosition,
    TooFewGenomePoints,
    TooFewChromosomePoints,
};

// What is wrong, where, and on which text. Each program words it for its own users.
struct Fault {
    FaultCode code;
    qint64 line = 0;     // counted from 1, header included; 0 where no single line is at fault
    QString column = {}; // its title, or its number from 1 in a file without titles; may be empty
    QString text = {};   // the text at fault, at most its first 100 characters

    bool operator==(const Fault&) const = default;
};

// What was read, or why it could not be.
template <typename T>
using Result = std::variant<T, Fault>;
