#include "plain_p.h"

#include "plain_layout.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>
#include <cfloat>
#include <cmath>

namespace plain {

namespace {

const QString smallestDouble = QStringLiteral("4.94065645841247e-324");
constexpr long double logOfSmallest = 323.306215343115803585L; // -log10 of 2^-1074
constexpr long double logOfRoundedOne = -4.3429426e-7L;        // -log10 of 1.000001

QString sixDigits(long double number) {
    return QString::asprintf("%.6Lg", number == 0 ? 0.0L : number);
}

PText good(const QString& p, const QString& log, long double negLog10) {
    return {PText::Good, p, log, negLog10, false};
}

PText one(const QString& log = QStringLiteral("0")) {
    return good(QStringLiteral("1"), log, 0);
}

// 10 to the power of -negLog10, with 17 digits also where a double holds fewer.
QString powerOfTen(double negLog10) {
    const auto p = static_cast<double>(std::pow(10.0L, -static_cast<long double>(negLog10)));
    if (p >= DBL_MIN)
        return QString::asprintf("%.17g", p);
    if (negLog10 > logOfSmallest)
        return smallestDouble;
    const double exponent = std::ceil(negLog10);
    const auto digits = static_cast<double>(std::pow(10.0L, exponent - negLog10));
    return QString::asprintf("%.17ge-%.0f", digits, exponent);
}

} // namespace

Decimal decimal(const QString& text) {
    static const QRegularExpression form("^([+-]?)(\\d*)\\.?(\\d*)(?:[eE]([+-]?)(\\d+))?$");
    const QRegularExpressionMatch match = form.match(text);
    Decimal result;
    QString digits = match.captured(2) + match.captured(3);
    if (!match.hasMatch() || digits.isEmpty())
        return result;
    result.isNumber = true;
    result.isNegative = match.captured(1) == u"-";
    long double power =
        std::min(std::strtold(match.captured(5).toLatin1().constData(), nullptr), 1e15L);
    if (match.captured(4) == u"-")
        power = -power;
    long double exponent = power + static_cast<long double>(match.captured(2).size());
    while (digits.startsWith(u'0')) {
        digits.remove(0, 1);
        --exponent;
    }
    result.isZero = digits.isEmpty();
    result.isFinite = true;
    if (result.isZero)
        return result;
    const long double mantissa = std::strtold(("0." + digits.toLatin1()).constData(), nullptr);
    result.log10 = std::log10(mantissa) + exponent;
    result.value = std::strtold(text.toLatin1().constData(), nullptr);
    result.isFinite = std::isfinite(static_cast<double>(result.value));
    return result;
}

PText readP(const QString& text) {
    if (isMissing(text))
        return {};
    if (text.startsWith(u'<')) {
        const PText bound = readP(trimmed(text.mid(text.startsWith("<=") ? 2 : 1)));
        return bound.kind == PText::Missing ? PText{PText::NotANumber, {}, {}, 0, false} : bound;
    }
    bool isRead = false;
    const double value = text.toDouble(&isRead);
    const Decimal number = decimal(text);
    if (!number.isNumber || (isRead && !std::isfinite(value)))
        return {PText::NotANumber, {}, {}, 0, false};
    if (number.isZero)
        return {PText::Zero, {}, {}, 0, true};
    if (number.isNegative)
        return {PText::OutOfRange, {}, {}, 0, false};
    if (-number.log10 < 0)
        return number.value <= 1.000001L ? one() : PText{PText::OutOfRange, {}, {}, 0, false};
    const bool isHeld = isRead && value > 0;
    PText result = good(isHeld ? text : smallestDouble, sixDigits(-number.log10), -number.log10);
    result.isOnlyText = !isHeld;
    return result;
}

PText readLog(const QString& text, PScale scale) {
    if (isMissing(text))
        return {};
    const Decimal number = decimal(text);
    if (!number.isFinite)
        return {PText::NotANumber, {}, {}, 0, false};
    // A -log10 p is what a double holds of it.
    bool isRead = false;
    double negLog10 = text.toDouble(&isRead);
    if (!isRead)
        negLog10 = static_cast<double>(number.value);
    if (scale == PScale::Log10)
        negLog10 = -negLog10;
    if (scale == PScale::Ln)
        negLog10 = -negLog10 / std::log(10.0);
    const QString turned = text.startsWith(u'-') ? text.mid(1) : text;
    const QString log = scale == PScale::NegLog10 ? text
                        : scale == PScale::Log10  ? turned
                                                  : sixDigits(negLog10);
    if (negLog10 < logOfRoundedOne)
        return {PText::OutOfRange, {}, {}, 0, false};
    if (negLog10 < 0 || (negLog10 == 0 && text.startsWith(u'-')))
        return one();
    PText result = good(powerOfTen(negLog10), log, negLog10);
    result.isOnlyText = result.p == smallestDouble;
    return result;
}

PText readZ(const QString& z, const QString& divisor) {
    if (isMissing(z) || isMissing(divisor))
        return {};
    const Decimal effect = decimal(z), error = decimal(divisor);
    if (!effect.isFinite || !error.isFinite || error.isNegative || error.isZero)
        return {PText::NotANumber, {}, {}, 0, false};
    // A long double holds the tail of any z up to 150 or so.
    const long double size = std::abs(effect.value / error.value);
    const long double tail = std::erfc(size / std::sqrt(2.0L));
    // Beyond, the first terms of its series are enough.
    const long double far = size * size / 2 * 0.434294481903251827651L +
                            std::log10(size * std::sqrt(std::acos(-1.0L) / 2)) -
                            std::log10(1 - 1 / size / size);
    const long double negLog10 = tail > 0 ? 0 - std::log10(tail) : far;
    if (negLog10 > logOfSmallest)
        return good(smallestDouble, sixDigits(negLog10), negLog10);
    const double p = static_cast<double>(tail);
    return good(QString::number(p, 'g', QLocale::FloatingPointShortest), sixDigits(negLog10),
                negLog10);
}

} // namespace plain
