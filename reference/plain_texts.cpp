#include "plain_texts.h"

#include <QStringList>

namespace plain {

QString groupedInThrees(int number) {
    const QString digits = QString::number(number, 10);
    QString grouped;
    int counter = 0;
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        ++counter;
        grouped.prepend(digits[i]);
        if (counter == 3 && i >= 1) {
            grouped.prepend(u',');
            counter = 0;
        }
    }
    return grouped;
}

PositionRange highlightRange(const QString& first, const QString& second) {
    const QStringList parts = first.split("-", Qt::KeepEmptyParts, Qt::CaseSensitive);
    bool isLow = false, isHigh = false;
    PositionRange range;
    if (parts.size() == 2) {
        range.low = parts[0].toInt(&isLow, 10);
        range.high = parts[1].toInt(&isHigh, 10);
    } else {
        range.low = first.toInt(&isLow, 10);
        range.high = second.toInt(&isHigh, 10);
    }
    if (!isLow || !isHigh)
        range.low = range.high = 0;
    return range;
}

} // namespace plain
