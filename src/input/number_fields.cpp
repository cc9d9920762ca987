#include "input/number_fields.h"

#include "input/utf8.h"

#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

struct Digits {
    uint64_t number; // the digits as a whole number, behind those that were there before
    const char* end; // behind the last digit
};

Digits readDigits(const char* at, const char* end, uint64_t before) {
    uint64_t number = before;
    for (; at != end; ++at) {
        const auto digit = static_cast<unsigned char>(*at - '0');
        if (digit > 9)
            break;
        number = number * 10 + digit;
    }
    return {number, at};
}

// A plain number: digits, perhaps a point between digits, perhaps an exponent of up to four digits.
struct PlainReal {
    bool isPlain = false;
    uint64_t digits = 0; // all digits as one whole number; meaningless from 20 digits on
    std::ptrdiff_t digitCount = 0;
    std::ptrdiff_t exponent = 0; // of ten, that the digits are to be multiplied by
};

// Adds the exponent between `at`, behind the "e", and the field's end. False where it is none.
bool addExponent(const char* at, const char* end, PlainReal& real) {
    const bool isNegative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+'))
        ++at;
    const Digits exponent = readDigits(at, end, 0);
    const std::ptrdiff_t count = exponent.end - at;
    if (exponent.end != end || count < 1 || count > 4)
        return false;
    const auto number = static_cast<std::ptrdiff_t>(exponent.number);
    real.exponent += isNegative ? -number : number;
    return true;
}

PlainReal parsePlainReal(std::string_view field) {
    const char* const start = field.data();
    const char* const end = start + field.size();
    PlainReal real;
    Digits digits = readDigits(start, end, 0);
    real.digitCount = digits.end - start;
    real.isPlain = real.digitCount > 0;
    if (digits.end != end && *digits.end == '.') {
        const char* const afterPoint = digits.end + 1;
        digits = readDigits(afterPoint, end, digits.number);
        real.exponent = afterPoint - digits.end;
        real.digitCount -= real.exponent;
        real.isPlain = real.isPlain && real.exponent < 0;
    }
    real.digits = digits.number;
    if (digits.end != end) {
        const bool isExponent = *digits.end == 'e' || *digits.end == 'E';
        real.isPlain = real.isPlain && isExponent && addExponent(digits.end + 1, end, real);
    }
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
    if (!field.empty() && field.size() <= safeDigits) {
        const char* const end = field.data() + field.size();
        const Digits digits = readDigits(field.data(), end, 0);
        if (digits.end == end)
            return static_cast<int>(digits.number);
    }
    bool ok = false;
    const int number = fromUtf8(field).toInt(&ok);
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
