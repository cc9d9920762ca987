#include "number_text.h"

#include <QByteArray>
#include <QtEndian>
#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

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

// The power of ten of the first digit, or one less, for a number between 10^-17 and a million.
int exponentOf(double number) {
    constexpr int bias = 1023, digits = 52;
    const int binary = static_cast<int>(std::bit_cast<quint64>(number) >> digits) - bias;
    return (binary * 1233) >> 12; // 1233 / 4096 is the logarithm of 2
}

// Scales the number by a power of ten until six digits stand before the point. The product is off
// by less than 10^-9, so it rounds as the exact value would unless its fraction is close to a half;
// then the number is not plain. Nearly all numbers written are plain.
SixDigits sixDigits(double number) {
    constexpr double lowest = 1e-16, largestError = 1e-9;
    if (!(number >= lowest && number < highestSixDigits))
        return {};
    int power = std::max(4 - exponentOf(number), 0);
    power += number * powersOfTen[power] < lowestSixDigits ? 1 : 0;
    const double scaled = number * powersOfTen[power];
    if (scaled >= highestSixDigits)
        return {};
    const int digits = static_cast<int>(scaled);
    const double rest = scaled - digits;
    return {std::abs(rest - 0.5) > largestError, digits + (rest > 0.5 ? 1 : 0), 5 - power};
}

// Six digits as text, without the zeros at their end. The text is kept in a register, the first
// digit in the lowest byte, from which parts of it are stored without a detour through memory.
class Digits {
public:
    explicit Digits(int number) {
        constexpr quint64 zeros = 0x3030303030303030;
        const auto all = static_cast<quint64>(number), four = all / 100, two = four / 100;
        const quint64 pairs = two | (four % 100) << 16 | (all % 100) << 32;
        const quint64 tens = (pairs * 103) >> 10 & 0x000f000f000f;
        m_values = tens | (pairs - 10 * tens) << 8;
        m_text = m_values | zeros;
        while (m_values >> (8 * m_size - 8) == 0)
            --m_size;
    }

    int size() const { return m_size; }

    // Writes the digits from one on; eight bytes are overwritten. Returns the end.
    char* write(int from, char* at) const {
        qToLittleEndian(m_text >> (8 * from), at);
        return at + (m_size - from);
    }

private:
    quint64 m_values = 0; // a byte each
    quint64 m_text = 0;
    int m_size = 6;
};

char* writeFixed(const Digits& digits, int exponent, char* at) {
    if (exponent < 0) {
        std::memcpy(at, "0.000\0\0", 8);
        return digits.write(0, at + 1 - exponent);
    }
    const int whole = exponent + 1;
    char* const end = digits.write(0, at);
    if (digits.size() <= whole)
        return at + whole;
    at[whole] = '.';
    digits.write(whole, at + whole + 1);
    return end + 1;
}

char* writeScientific(const Digits& digits, int exponent, char* at) {
    at = writeFixed(digits, 0, at);
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
    const Digits digits(rounded.digits);
    return rounded.exponent < -4 ? writeScientific(digits, rounded.exponent, at)
                                 : writeFixed(digits, rounded.exponent, at);
}
