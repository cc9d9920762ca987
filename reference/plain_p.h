#pragma once

#include "prepare_options.h"

#include <QString>
#include <cmath>

// Texts of p and of its logarithms.
namespace plain {

struct PText {
    enum Kind { Missing, NotANumber, OutOfRange, Zero, Good };
    Kind kind = Missing;
    QString p;   // as the window reads it
    QString log; // -log10 p
    long double negLog10 = 0;
    bool isOnlyText = false; // the window reads no p above 0 from it
};

PText readP(const QString& text);
PText readLog(const QString& text, PScale scale);
PText readZ(const QString& z, const QString& divisor); // of a two-sided normal test

struct Decimal {
    bool isNumber = false;
    bool isFinite = false; // as a double
    bool isNegative = false;
    bool isZero = false;
    long double log10 = 0; // of the absolute value
    long double value = 0;

    bool isWhole() const { return isFinite && value == std::floor(value); }
};
Decimal decimal(const QString& text);

} // namespace plain
