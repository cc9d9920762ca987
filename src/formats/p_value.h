#pragma once

#include <QByteArray>
#include <string_view>

// The texts that stand for a missing value: NA N/A n/a na nan NaN -nan null NULL None NONE . - #NA
// NR and the empty text.
bool isMissing(std::string_view text);

// What the text of a p-value says, whether or not a double holds it.
struct PValue {
    enum class Kind { Number, Missing, NotANumber };
    Kind kind = Kind::NotANumber;
    bool isBound = false;        // "<2e-16": the bound is the value
    bool isReadByWindow = false; // QString::toDouble takes the text, to a finite number that is not
                                 // 0 unless the text says 0
    double p = 0.0; // as QString::toDouble; 0 below the smallest double, and for text that Qt
                    // does not take, the nearest double
    double negLog10 = 0.0; // true -log10 p, also where p is below the smallest double; +inf for 0;
                           // meaningless for negative p
    bool isNegative = false;
};

// Reads a p-value: a decimal number with any exponent, perhaps after "<". `decimalComma`: the comma
// is the decimal point. Infinities and hexadecimal numbers are not numbers.
PValue readPValue(std::string_view text, bool decimalComma);

// Reads a logarithm or an effect: a finite decimal number. False for any other text.
bool readNumber(std::string_view text, bool decimalComma, double& number);

// Appends -log10 p with six significant digits, as the window's tables have it.
void appendNegLog10(double negLog10, QByteArray& text);

// Appends the p-value of a -log10 p with 17 significant digits; 4.94065645841247e-324, the smallest
// p that the window reads, where p is below it.
void appendPOfNegLog10(double negLog10, QByteArray& text);

// -log10 of the two-sided p-value of a standard normal z, computed in log space: exact to 12 digits
// or more for any z.
double negLog10OfZ(double z);
