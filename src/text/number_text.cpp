#include "number_text.h"

#include "powers_of_ten.h"

#include <QByteArray>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {

constexpr int lowestSixDigits = 100'000;
constexpr int highestSixDigits = 999'999;

// A number rounded to six digits: digits * 10^(exponent - 5).
struct SixDigits {
    bool isPlain = false;
    int digits = 0;   // six of them
    int exponent = 0; // of ten, that the first digit is to be multiplied by
};

// Multiplied by a power of ten, a number gets six digits before the point and an error of less than
// 10^-9. So it is plain which way to round, unless the rest behind the point is about a half.
// Numbers from 10^-17 to a million are plain: nearly all that are written.
SixDigits sixDigits(double number) {
    constexpr double about = 1e-9;
    int power = 0;
    double scaled = number;
    while (scaled < lowestSixDigits && power + 1 < std::ssize(powersOfTen))
        scaled = number * powersOfTen[++power];
    if (!(scaled >= lowestSixDigits && scaled < highestSixDigits))
        return {};
    const int digits = static_cast<int>(scaled);
    const double rest = scaled - digits;
    return {std::abs(rest - 0.5) > about, digits + (rest > 0.5 ? 1 : 0), 5 - power};
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
