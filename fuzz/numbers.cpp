// Numbers in text: the reader's conversions must agree with Qt's bit for bit. The input's first
// byte chooses between a text, which follows, and numbers to be formatted in one of five ways.

#include "finding.h"
#include "input.h"
#include "number_fields.h"
#include "utf8.h"

#include <bit>
#include <cmath>

namespace {

std::string_view view(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QString told(const std::optional<double>& number) {
    return number ? QString::number(*number, 'g', 17) : QStringLiteral("no number");
}

QString told(const std::optional<int>& number) {
    return number ? QString::number(*number) : QStringLiteral("no number");
}

bool isSame(const std::optional<double>& a, const std::optional<double>& b) {
    const double x = a.value_or(0.0), y = b.value_or(0.0);
    return a.has_value() == b.has_value() &&
           (std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y) ||
            (std::isnan(x) && std::isnan(y)));
}

void check(const QByteArray& field) {
    const QString text = fromUtf8(view(field));
    bool isReal = false, isInteger = false;
    const double real = text.toDouble(&isReal);
    const int integer = text.toInt(&isInteger);
    const std::optional<double> expectedReal = isReal ? std::optional(real) : std::nullopt;
    const std::optional<int> expectedInteger = isInteger ? std::optional(integer) : std::nullopt;
    const std::optional<double> gotReal = toReal(view(field));
    const std::optional<int> gotInteger = toInteger(view(field));
    mustHold(isSame(gotReal, expectedReal), "real", told(expectedReal), told(gotReal));
    mustHold(gotInteger == expectedInteger, "integer", told(expectedInteger), told(gotInteger));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr char forms[] = {'g', 'e', 'f', 'G', 'E'};
    Input input(bytes, size);
    const int how = input.below(6);
    if (how == 5) {
        check(input.rest());
        return 0;
    }
    const int precision = input.below(40);
    while (!input.isAtEnd()) {
        const QByteArray field = QByteArray::number(input.number<double>(), forms[how], precision);
        check(field);
        check(field + '0');
        check(field.mid(1)); // without its leading zero
        check(QByteArray::number(input.number<std::int64_t>()));
        check(QByteArray::number(input.number<std::int32_t>()));
    }
    return 0;
}
