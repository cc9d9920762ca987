#include "plot_texts.h"

#include "int_arithmetic.h"

#include <QFileInfo>
#include <QStringList>

PositionRange highlightRange(const QString& first, const QString& second) {
    const QStringList parts = first.split(u'-');
    const bool bothInFirst = parts.size() == 2;
    bool isLow = false, isHigh = false;
    const PositionRange range{
        (bothInFirst ? parts[0] : first).toInt(&isLow),
        (bothInFirst ? parts[1] : second).toInt(&isHigh),
    };
    return isLow && isHigh ? range : PositionRange{};
}

QString groupedInThrees(int number) {
    QString text = QString::number(number);
    for (qsizetype i = text.size() - 3; i > 0; i -= 3)
        text.insert(i, u',');
    return text;
}

QString spanText(int first, int last) {
    return QStringLiteral("|<-- %1 -->|").arg(groupedInThrees(wrappedDifference(last, first)));
}

QString titleName(const QString& path) {
    return QString::fromLocal8Bit(QFileInfo(path).fileName().toLocal8Bit().left(titleNameBytes));
}

QString valueText(double value) {
    return QString::number(value, 'g', 6);
}
