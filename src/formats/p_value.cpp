#include "p_value.h"

#include "characters.h"
#include "number_fields.h"
#include "number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <numbers>
#include <optional>
#include <string>

namespace {

using namespace std::string_view_literals;

constexpr std::array missingTexts = {""sv,    "NA"sv,   "N/A"sv,  "n/a"sv,  "na"sv,   "nan"sv,
                                     "NaN"sv, "-nan"sv, "null"sv, "NULL"sv, "None"sv, "NONE"sv,
                                     "."sv,   "-"sv,    "#NA"sv,  "NR"sv};
constexpr size_t longestMissing = 4; // characters

// The smallest p that the window reads, which is the smallest double, as the window writes it.
constexpr std::string_view smallestP = "4.94065645841247e-324";
constexpr double smallestPDigits = 4.94065645841247;
constexpr int smallestPExponent = -324;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double smallestNormal = std::numeric_limits<double>::min();

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

// Takes the character off the front of the text, if it is there.
bool take(char character, std::string_view& text) {
    if (!text.starts_with(character))
        return false;
    text.remove_prefix(1);
    return true;
}

// The size of a decimal number: digits * 10^exponent.
struct Decimal {
    bool isNegative = false;
    quint64 digits = 0; // the first significant ones
    double exponent = 0.0;

    double log10() const { return std::log10(static_cast<double>(digits)) + exponent; }
};

// Takes digits off the front of the text. `step` is what each of them adds to the exponent. Digits
// that no longer fit change nothing but the exponent. Returns how many there were.
size_t takeDigits(std::string_view& text, int step, Decimal& decimal) {
    constexpr quint64 full = 100'000'000'000'000'000; // 10^17, so that ten times as much fits, too
    const auto count =
        static_cast<size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
    for (const char character : text.substr(0, count)) {
        const bool fits = decimal.digits < full;
        if (fits)
            decimal.digits = decimal.digits * 10 + static_cast<quint64>(character - '0');
        decimal.exponent += step + (fits ? 0 : 1);
    }
    text.remove_prefix(count);
    return count;
}

// Takes the exponent after an e. False if there is none. One of any length is a number.
bool takeExponent(std::string_view& text, double& exponent) {
    const bool isNegative = take('-', text);
    if (!isNegative)
        take('+', text);
    if (text.empty())
        return false;
    double size = 0.0;
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1))
        size = std::min(size * 10 + (text.front() - '0'), 1e15);
    exponent += isNegative ? -size : size;
    return true;
}

std::optional<Decimal> toDecimal(std::string_view text) {
    Decimal decimal;
    decimal.isNegative = take('-', text);
    if (!decimal.isNegative)
        take('+', text);
    size_t digits = takeDigits(text, 0, decimal);
    if (take('.', text))
        digits += takeDigits(text, -1, decimal);
    if (digits == 0)
        return std::nullopt;
    if ((take('e', text) || take('E', text)) && !takeExponent(text, decimal.exponent))
        return std::nullopt;
    return text.empty() ? std::optional(decimal) : std::nullopt;
}

// The double nearest to a decimal number, also where Qt takes its size for an error.
double nearestDouble(std::string_view text, const Decimal& decimal) {
    double number = 0.0;
    if (readReal(text, number))
        return number;
    const double size = decimal.digits == 0 || decimal.log10() < 0.0 ? 0.0 : infinity;
    return decimal.isNegative ? -size : size;
}

// The text, with a point instead of its decimal comma.
std::string pointed(std::string_view text, bool decimalComma) {
    std::string result(text);
    if (decimalComma && text.find('.') == std::string_view::npos)
        std::ranges::replace(result, ',', '.');
    return result;
}

double negLog10Of(double p) {
    return 0.0 - std::log10(p); // of 1 it is 0.0, not -0.0
}

// What a text that is no plain number says.
PValue uncommonPValue(std::string_view text) {
    PValue result;
    const std::optional<Decimal> decimal = toDecimal(text);
    if (!decimal)
        return result;
    const bool isZero = decimal->digits == 0;
    result.kind = PValue::Kind::Number;
    result.isNegative = decimal->isNegative && !isZero;
    result.p = nearestDouble(text, *decimal);
    result.isReadByWindow = std::isfinite(result.p) && (isZero || result.p != 0.0);
    const double size = std::abs(result.p);
    if (isZero)
        result.negLog10 = infinity;
    else if (size >= smallestNormal && std::isfinite(size))
        result.negLog10 = negLog10Of(size);
    else
        result.negLog10 = 0.0 - decimal->log10();
    return result;
}

PValue missingPValue() {
    PValue result;
    result.kind = PValue::Kind::Missing;
    return result;
}

// Kept apart from the plain numbers, of which there are millions.
Q_NEVER_INLINE PValue readUncommon(std::string_view text, bool decimalComma) {
    text = trimmed(text);
    if (isMissing(text))
        return missingPValue();
    const bool isBound = take('<', text);
    if (isBound) {
        take('=', text);
        text = trimmed(text);
    }
    const std::string translated = pointed(text, decimalComma);
    PValue result = uncommonPValue(translated);
    result.isBound = isBound && result.kind == PValue::Kind::Number;
    result.isReadByWindow = result.isReadByWindow && !isBound && translated == text;
    return result;
}

// -log10 of erfc(z / sqrt 2) by its asymptotic series, for z from 10 on. There the terms become
// smaller than a double's last digit long before they grow again.
double negLog10OfLargeZ(double z) {
    constexpr int terms = 20;
    double sum = 1.0, term = 1.0;
    for (int i = 0; i < terms; ++i)
        sum += term *= -(2 * i + 1) / z / z;
    const double ln = std::log(z) + std::log(std::numbers::pi / 2) / 2 - std::log(sum);
    return z * (z / (2 * std::numbers::ln10)) + ln / std::numbers::ln10;
}

// 10^exponent to the last digit of a double, or nearly so: pow() of doubles may miss it by more.
double powerOfTen(double exponent) {
    return static_cast<double>(std::pow(10.0L, static_cast<long double>(exponent)));
}

void appendDigits(double number, QByteArray& text) {
    constexpr int digits = 17;
    char buffer[32];
    const std::to_chars_result end = std::to_chars(std::begin(buffer), std::end(buffer), number,
                                                   std::chars_format::general, digits);
    text.append(std::begin(buffer), end.ptr - std::begin(buffer));
}

// The same below the smallest normal double, where doubles have fewer digits than the text.
void appendSubnormalP(double negLog10, QByteArray& text) {
    const double exponent = std::floor(-negLog10);
    const double digits = powerOfTen(-negLog10 - exponent);
    if (exponent < smallestPExponent ||
        (exponent == smallestPExponent && digits < smallestPDigits)) {
        text.append(smallestP.data(), smallestP.size());
        return;
    }
    appendDigits(digits, text);
    text.append('e');
    text.append(QByteArray::number(static_cast<int>(exponent)));
}

} // namespace

bool isMissing(std::string_view text) {
    text = trimmed(text);
    return text.size() <= longestMissing &&
           std::ranges::find(missingTexts, text) != missingTexts.end();
}

PValue readPValue(std::string_view text, bool decimalComma) {
    PValue result;
    const bool isPlain = readReal(text, result.p) && result.p >= smallestNormal;
    if (!isPlain || !std::isfinite(result.p))
        return readUncommon(text, decimalComma);
    result.kind = PValue::Kind::Number;
    result.isReadByWindow = true;
    result.negLog10 = negLog10Of(result.p);
    return result;
}

bool readNumber(std::string_view text, bool decimalComma, double& number) {
    if (readReal(text, number))
        return std::isfinite(number);
    const std::string translated = pointed(trimmed(text), decimalComma);
    const std::optional<Decimal> decimal = toDecimal(translated);
    if (decimal)
        number = nearestDouble(translated, *decimal);
    return decimal && std::isfinite(number);
}

void appendNegLog10(double negLog10, QByteArray& text) {
    char digits[numberTextRoom];
    char* const end = writeNumber(negLog10 + 0.0, std::begin(digits)); // -0.0 becomes 0.0
    text.append(std::begin(digits), end - std::begin(digits));
}

void appendPOfNegLog10(double negLog10, QByteArray& text) {
    const double p = powerOfTen(-negLog10);
    if (p >= smallestNormal)
        appendDigits(p, text);
    else
        appendSubnormalP(negLog10, text);
}

double negLog10OfZ(double z) {
    constexpr double large = 10.0;
    z = std::abs(z);
    if (z >= large)
        return negLog10OfLargeZ(z);
    const double root = z / std::numbers::sqrt2;
    // Near p = 1 the difference from 1 has the digits.
    if (z < 1.0)
        return 0.0 - std::log1p(-std::erf(root)) / std::numbers::ln10;
    return negLog10Of(std::erfc(root));
}
