#include "number_fields.h"

#include "powers_of_ten.h"
#include "utf8.h"

#include <QtEndian>
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

// The text's 4 to 8 characters in one number, the last one in the highest byte, behind zeros.
uint64_t rightAligned(std::string_view text) {
    constexpr uint64_t zeros = 0x3030303030303030;
    const auto missing = static_cast<unsigned>(8 - text.size()) * 8; // bits
    const auto first = static_cast<uint64_t>(qFromLittleEndian<quint32>(text.data()));
    const auto last = static_cast<uint64_t>(
        qFromLittleEndian<quint32>(text.data() + text.size() - sizeof(quint32)));
    return last << 32 | first << missing | (zeros & ((uint64_t{1} << missing) - 1));
}

bool isShort(std::string_view text) {
    return text.size() >= 4 && text.size() <= 8;
}

// The number that 4 to 8 digits stand for, all calculated with at once: pairs, then fours, then
// all. Negative where one of them is no digit.
int shortNumber(std::string_view text) {
    uint64_t digits = rightAligned(text);
    constexpr uint64_t highHalves = 0xf0f0f0f0f0f0f0f0;
    const uint64_t aboveDigits = digits + 0x0606060606060606; // 0x40 and more from ':' on
    if ((digits & highHalves) != 0x3030303030303030 ||
        (aboveDigits & highHalves) != 0x3030303030303030)
        return -1;
    digits &= ~highHalves;
    digits = (digits * 10 + (digits >> 8)) & 0x00ff00ff00ff00ff;
    digits = (digits * 100 + (digits >> 16)) & 0x0000ffff0000ffff;
    return static_cast<int>((digits * 10000 + (digits >> 32)) & 0xffffffff);
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
    const auto digits = static_cast<double>(real.digits);
    return real.exponent < 0 ? digits / powersOfTen[-real.exponent]
                             : digits * powersOfTen[real.exponent];
}

bool readByToolkit(std::string_view field, double& number) {
    bool ok = false;
    number = fromUtf8(field).toDouble(&ok);
    return ok;
}

// The number that 1 to 9 digits, so many as surely fit, stand for. Negative for any other text.
int shortInteger(std::string_view field) {
    if (isShort(field))
        return shortNumber(field);
    if (field.empty() || field.size() > 9)
        return -1;
    const size_t headSize = field.size() > 8 ? 8 : 0;
    const int head = headSize > 0 ? shortNumber(field.substr(0, headSize)) : 0;
    const char* const end = field.data() + field.size();
    const Digits digits = readDigits(field.data() + headSize, end, static_cast<uint64_t>(head));
    return head >= 0 && digits.end == end ? static_cast<int>(digits.number) : -1;
}

// The number that a digit, a point and 4 to 8 digits stand for, as most p-values are written.
// Negative for any other text.
double shortReal(std::string_view field) {
    if (FLT_EVAL_METHOD != 0 || field.size() < 2 || field[1] != '.' || !isShort(field.substr(2)))
        return -1.0;
    const int whole = field[0] - '0', fraction = shortNumber(field.substr(2));
    if (whole < 0 || whole > 9 || fraction < 0)
        return -1.0;
    const double scale = powersOfTen[field.size() - 2];
    return (whole * scale + fraction) / scale;
}

Q_NEVER_INLINE bool readAnyReal(std::string_view field, double& number) {
    constexpr size_t longestPlain = 100; // characters, so that no count of them overflows
    if (field.size() > longestPlain)
        return readByToolkit(field, number);
    const PlainReal real = parsePlainReal(field);
    if (!real.isPlain)
        return readByToolkit(field, number);
    if (isExactBySingleRounding(real)) {
        number = bySingleRounding(real);
        return true;
    }
    const auto result = std::from_chars(field.data(), field.data() + field.size(), number);
    // Where digits are lost below the smallest normal number, the toolkit decides.
    const bool isSure = result.ec == std::errc() && std::isnormal(number);
    return isSure || readByToolkit(field, number);
}

Q_NEVER_INLINE bool readAnyInteger(std::string_view field, int& number) {
    bool ok = false;
    number = fromUtf8(field).toInt(&ok);
    return ok;
}

} // namespace

bool readInteger(std::string_view field, int& number) {
    number = shortInteger(field);
    return number >= 0 || readAnyInteger(field, number);
}

bool readReal(std::string_view field, double& number) {
    number = shortReal(field);
    return number >= 0.0 || readAnyReal(field, number);
}

std::optional<int> toInteger(std::string_view field) {
    int number = 0;
    return readInteger(field, number) ? std::optional(number) : std::nullopt;
}

std::optional<double> toReal(std::string_view field) {
    double number = 0.0;
    return readReal(field, number) ? std::optional(number) : std::nullopt;
}
