#include "number_text.h"

#include <QByteArray>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {

// Every power of ten that a double holds exactly.
constexpr double powersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                  1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                  1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int lowestSixDigits = 100'000;
constexpr int highestSixDigits = 999'999;

// A number rounded to six digits: digits * 10^(exponent - 5).
struct SixDigits {
    bool isPlain = false;
    int digits = 0;   // six of them
    int exponent = 0; // power of ten of the first digit
};

// Scales the number by a power of ten until six digits stand before the point. The product is off
// by less than 10^-9, so it rounds as the exact value would unless its fraction is close to a half;
// then the number is not plain. Nearly all numbers written are plain: they lie between 10^-17 and a
// million.
SixDigits sixDigits(double number) {
    constexpr double largestError = 1e-9;
    int power = 0;
    double scaled = number;
    while (scaled < lowestSixDigits && power + 1 < std::ssize(powersOfTen))
        scaled = number * powersOfTen[++power];
    if (!(scaled >= lowestSixDigits && scaled < highestSixDigits))
        return {};
    const int digits = static_cast<int>(scaled);
    const double rest = scaled - digits;
    return {std::abs(rest - 0.5) > largestError, digits + (rest > 0.5 ? 1 : 0), 5 - power};
}

char* writeFixed(const char* digits, const char* end, int exponent, char* at) {
    if (exponent < 0) {
        at = std::copy_n("0.000", 1 - exponent, at);
        return std::copy(digits, end, at);
    }
    const char* const point = digits + exponent + 1;
    at = std::copy(digits, point, at);
    if (end <= point)
        return at;
    *at++ = '.';
    return std::copy(point, end, at);
}

char* writeScientific(const char* digits, const char* end, int exponent, char* at) {
    at = writeFixed(digits, end, 0, at);
    at = std::copy_n("e-", 2, at);
    if (exponent > -10)
        *at++ = '0';
    return std::to_chars(at, at + 2, -exponent).ptr;
}

} // namespace

char* writeNumber(double number, char* at) {
    const SixDigits rounded = sixDigits(number);
    if (!rounded.isPlain) {
        const QByteArray text = QByteArray::number(number, 'g', 6);
        return std::copy(text.begin(), text.end(), at);
    }
    char digits[6];
    const char* end = std::to_chars(std::begin(digits), std::end(digits), rounded.digits).ptr;
    while (end[-1] == '0')
        --end;
    const auto write = rounded.exponent < -4 ? writeScientific : writeFixed;
    return write(digits, end, rounded.exponent, at);
}
