#include "number_fields.h"

#include "utf8.h"

#include <QtEndian>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isShort(std::string_view text) {
    return text.size() >= 4 && text.size() <= 8;
}

// Loads a short text right-aligned: its last character in the highest byte, '0' in unused bytes.
uint64_t rightAligned(std::string_view text) {
    constexpr uint64_t zeros = 0x3030303030303030;
    const auto missing = static_cast<unsigned>(8 - text.size()) * 8; // bits
    const auto first = static_cast<uint64_t>(qFromLittleEndian<quint32>(text.data()));
    const auto last = static_cast<uint64_t>(
        qFromLittleEndian<quint32>(text.data() + text.size() - sizeof(quint32)));
    return last << 32 | first << missing | (zeros & ((uint64_t{1} << missing) - 1));
}

// Returns the value of a short text of digits, or -1 if any is not a digit. Combines all digits at
// once: into pairs, then fours, then eight.
int shortNumber(std::string_view text) {
    uint64_t digits = rightAligned(text);
    constexpr uint64_t highHalves = 0xf0f0f0f0f0f0f0f0;
    const uint64_t aboveDigits = digits + 0x0606060606060606; // makes ':' and above 0x40 or more
    if ((digits & highHalves) != 0x3030303030303030 ||
        (aboveDigits & highHalves) != 0x3030303030303030)
        return -1;
    digits &= ~highHalves;
    digits = (digits * 10 + (digits >> 8)) & 0x00ff00ff00ff00ff;
    digits = (digits * 100 + (digits >> 16)) & 0x0000ffff0000ffff;
    return static_cast<int>((digits * 10000 + (digits >> 32)) & 0xffffffff);
}

// Returns the value of 4 to 9 digits, as nearly all positions have; a negative number for any other
// text. Multiplied and added to, shortNumber()'s -1 stays negative.
int shortInteger(std::string_view field) {
    if (isShort(field))
        return shortNumber(field);
    if (field.size() != 9 || !isDigit(field[8]))
        return -1;
    return shortNumber(field.substr(0, 8)) * 10 + (field[8] - '0');
}

// Returns the value of a point and 4 to 8 digits, with or without one digit before the point, as
// most p-values are written; -1 for any other text. The numerator is a whole number below 2^53, so
// the quotient is rounded once and thus correctly, unless registers are wider than a double.
double shortReal(std::string_view field) {
    const size_t point = field.starts_with('.') ? 0 : 1;
    if (FLT_EVAL_METHOD != 0 || field.size() <= point || field[point] != '.')
        return -1.0;
    const std::string_view decimals = field.substr(point + 1);
    if (!isShort(decimals) || (point == 1 && !isDigit(field[0])))
        return -1.0;
    static constexpr double scales[] = {1e4, 1e5, 1e6, 1e7, 1e8};
    const double scale = scales[decimals.size() - 4];
    const int whole = point == 1 ? field[0] - '0' : 0, fraction = shortNumber(decimals);
    return fraction < 0 ? -1.0 : (whole * scale + fraction) / scale;
}

// Converts the field if it is a number from its first character to its last.
template <typename Number>
bool readWhole(std::string_view field, Number& number) {
    const char* const end = field.data() + field.size();
    const std::from_chars_result result = std::from_chars(field.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

bool readPlain(std::string_view field, int& number) {
    return readWhole(field, number);
}

// std::from_chars differs from Qt for letters, signs and results that are not normal. Short texts
// cannot overflow its counts of digits and exponents.
bool readPlain(std::string_view field, double& number) {
    constexpr size_t longestPlain = 100; // characters
    const bool looksPlain =
        !field.empty() && field.size() <= longestPlain && (isDigit(field[0]) || field[0] == '.');
    return looksPlain && readWhole(field, number) && std::isnormal(number);
}

bool readByQt(std::string_view field, int& number) {
    bool ok = false;
    number = fromUtf8(field).toInt(&ok);
    return ok;
}

bool readByQt(std::string_view field, double& number) {
    bool ok = false;
    number = fromUtf8(field).toDouble(&ok);
    return ok;
}

// Kept out of line, so that the short conversions before it save no registers.
template <typename Number>
Q_NEVER_INLINE bool readUncommon(std::string_view field, Number& number) {
    return readPlain(field, number) || readByQt(field, number);
}

template <typename Number>
std::optional<Number> numberIf(bool isRead, const Number& number) {
    return isRead ? std::optional(number) : std::nullopt;
}

} // namespace

bool readInteger(std::string_view field, int& number) {
    number = shortInteger(field);
    return number >= 0 || readUncommon(field, number);
}

bool readReal(std::string_view field, double& number) {
    number = shortReal(field);
    return number >= 0.0 || readUncommon(field, number);
}

std::optional<int> toInteger(std::string_view field) {
    int number = 0;
    return numberIf(readInteger(field, number), number);
}

std::optional<double> toReal(std::string_view field) {
    double number = 0.0;
    return numberIf(readReal(field, number), number);
}

std::optional<int> plainInteger(std::string_view field) {
    int number = shortInteger(field);
    return numberIf(number >= 0 || readPlain(field, number), number);
}

std::optional<double> plainReal(std::string_view field) {
    double number = shortReal(field);
    return numberIf(number >= 0.0 || readPlain(field, number), number);
}
