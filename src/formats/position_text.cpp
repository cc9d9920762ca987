#include "position_text.h"

#include "p_value.h"
#include "titles.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

bool isDigits(const QByteArray& text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

bool isGrouped(const QByteArray& text) {
    const QList<QByteArray> groups = text.split(',');
    return groups.size() > 1 && groups.first().size() < 4 && isDigits(groups.first()) &&
           std::all_of(groups.begin() + 1, groups.end(), [](const QByteArray& group) {
               return group.size() == 3 && isDigits(group);
           });
}

PositionKind readPosition(std::string_view text, const TableFormat& format, int& position) {
    if (isMissing(text))
        return PositionKind::Missing;
    QByteArray digits = bytesOf(text);
    if (isGrouped(digits)) {
        if (!format.quoted || format.decimalComma)
            return PositionKind::NotANumber;
        digits.replace(",", "");
    }
    double number = 0.0;
    if (!readNumber(viewOf(digits), format.decimalComma, number))
        return PositionKind::NotANumber;
    if (number != std::floor(number))
        return PositionKind::Fractional;
    using Limits = std::numeric_limits<int>;
    if (number > double(Limits::max()))
        return PositionKind::TooLarge;
    position = int(std::max(number, double(Limits::min())));
    return PositionKind::Whole;
}
