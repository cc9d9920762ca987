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

// The places of a plain number: digits, perhaps a point between digits, perhaps an exponent of up
// to four digits.
struct PlainReal {
    bool isPlain = false;
    uint64_t digits = 0; // all digits as one whole number; meaningless from 20 digits on
    int digitCount = 0;  // leading zeros do not count
    int exponent = 0;    // of ten, that the digits are to be multiplied by
};

class RealParser {
public:
    explicit RealParser(std::string_view field)
        : m_at(field.data()), m_end(field.data() + field.size()) {}

    PlainReal parse() {
        const bool hasWhole = takeDigits() > 0;
        bool hasFraction = true;
        if (m_at != m_end && *m_at == '.') {
            ++m_at;
            const int count = takeDigits();
            hasFraction = count > 0;
            m_real.exponent = -count;
        }
        m_real.isPlain = hasWhole && hasFraction && takeExponent() && m_at == m_end;
        return m_real;
    }

private:
    int takeDigits() {
        const char* const start = m_at;
        for (; m_at != m_end && isDigit(*m_at); ++m_at) {
            m_real.digits = m_real.digits * 10 + static_cast<uint64_t>(*m_at - '0');
            m_real.digitCount += m_real.digitCount > 0 || *m_at != '0';
        }
        return static_cast<int>(m_at - start);
    }

    bool takeExponent() {
        if (m_at == m_end || (*m_at != 'e' && *m_at != 'E'))
            return true;
        ++m_at;
        const bool isNegative = m_at != m_end && *m_at == '-';
        if (m_at != m_end && (*m_at == '-' || *m_at == '+'))
            ++m_at;
        const char* const start = m_at;
        int exponent = 0;
        for (; m_at != m_end && isDigit(*m_at) && m_at - start < 4; ++m_at)
            exponent = exponent * 10 + (*m_at - '0');
        m_real.exponent += isNegative ? -exponent : exponent;
        return m_at != start;
    }

    const char* m_at;
    const char* const m_end;
    PlainReal m_real;
};

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
    const PlainReal real = RealParser(field).parse();
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
