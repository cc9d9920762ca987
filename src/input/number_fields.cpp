#include "input/number_fields.h"

#include "input/utf8.h"

#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// A plain number: digits, perhaps a point between digits, perhaps an exponent of up to four digits.
struct PlainReal {
    bool isPlain = false;
    uint64_t digits = 0; // all digits as one whole number; meaningless from 20 digits on
    size_t digitCount = 0;
    int exponent = 0; // of ten, that the digits are to be multiplied by
};

// Reads digits from `at` on into the number; returns how many.
size_t takeDigits(const char*& at, const char* end, uint64_t& number) {
    const char* const start = at;
    for (; at != end && isDigit(*at); ++at)
        number = number * 10 + static_cast<uint64_t>(*at - '0');
    return static_cast<size_t>(at - start);
}

// Reads what stands behind an "e"; false where that is no exponent, or too long a one.
bool takeExponent(const char*& at, const char* end, int& exponent) {
    const bool isNegative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+'))
        ++at;
    uint64_t number = 0;
    const size_t count = takeDigits(at, end, number);
    if (count < 1 || count > 4)
        return false;
    exponent += isNegative ? -static_cast<int>(number) : static_cast<int>(number);
    return true;
}

PlainReal parsePlainReal(std::string_view field) {
    const char* at = field.data();
    const char* const end = at + field.size();
    PlainReal real;
    real.digitCount = takeDigits(at, end, real.digits);
    bool isPlain = real.digitCount > 0;
    if (at != end && *at == '.') {
        ++at;
        const size_t fraction = takeDigits(at, end, real.digits);
        isPlain = isPlain && fraction > 0;
        real.digitCount += fraction;
        real.exponent = -static_cast<int>(fraction);
    }
    if (at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        isPlain = isPlain && takeExponent(at, end, real.exponent);
    }
    real.isPlain = isPlain && at == end;
    return real;
}

// A whole number below 2^53 and a power of ten up to 10^22 are doubles without rounding, so that
// their product or quotient is rounded once: correctly. Not where the machine calculates in wider
// registers.
bool isExactBySingleRounding(const PlainReal& real) {
    constexpr uint64_t firstInexact = uint64_t{1} << 53;
    return FLT_EVAL_METHOD == 0 && real.digitCount < 20 && real.digits < firstInexact &&
           real.exponent >= -22 && real.exponent <= 22;
}

double bySingleRounding(const PlainReal& real) {
    constexpr double powersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                      1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    const auto digits = static_cast<double>(real.digits);
    return real.exponent < 0 ? digits / powersOfTen[-real.exponent]
                             : digits * powersOfTen[real.exponent];
}

std::optional<double> toRealByToolkit(std::string_view field) {
    bool ok = false;
    const double number = fromUtf8(field).toDouble(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

} // namespace

std::optional<int> toInteger(std::string_view field) {
    constexpr size_t safeDigits = 9; // any such number fits
    int number = 0;
    bool isPlain = !field.empty() && field.size() <= safeDigits;
    for (size_t i = 0; isPlain && i < field.size(); ++i) {
        isPlain = isDigit(field[i]);
        number = number * 10 + (field[i] - '0');
    }
    if (isPlain)
        return number;
    bool ok = false;
    number = fromUtf8(field).toInt(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

std::optional<double> toReal(std::string_view field) {
    constexpr size_t longestPlain = 100; // characters, so that no count of them overflows
    if (field.size() > longestPlain)
        return toRealByToolkit(field);
    const PlainReal real = parsePlainReal(field);
    if (!real.isPlain)
        return toRealByToolkit(field);
    if (isExactBySingleRounding(real))
        return bySingleRounding(real);
    double number = 0.0;
    const auto result = std::from_chars(field.data(), field.data() + field.size(), number);
    // Where digits are lost below the smallest normal number, the toolkit decides.
    if (result.ec == std::errc() && std::isnormal(number))
        return number;
    return toRealByToolkit(field);
}
