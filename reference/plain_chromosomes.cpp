#include "plain_chromosomes.h"

#include <QRegularExpression>

namespace plain {

namespace {

const QStringList named{"x", "y", "z", "w", "xy", "mt", "m"};
const QStringList unplaced{"0", "un", "na"};

// 0 numbers, 1 X to MT, 2 other texts, 3 unplaced.
int groupOf(const QString& key) {
    if (unplaced.contains(key) || key.startsWith("un_"))
        return 3;
    if (key[0] >= u'0' && key[0] <= u'9')
        return 0;
    return named.contains(key) ? 1 : 2;
}

QStringList pieces(const QString& text) {
    static const QRegularExpression piece("[0-9]+|[^0-9]+");
    QStringList found;
    auto matches = piece.globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured();
    return found;
}

// Numbers among the text are compared as numbers.
int naturally(const QString& a, const QString& b) {
    const QStringList as = pieces(a), bs = pieces(b);
    for (qsizetype i = 0; i < qMin(as.size(), bs.size()); ++i) {
        bool isNumber = false, otherIsNumber = false;
        const qulonglong number = as[i].toULongLong(&isNumber);
        const qulonglong other = bs[i].toULongLong(&otherIsNumber);
        if (isNumber && otherIsNumber && number != other)
            return number < other ? -1 : 1;
        if (as[i] != bs[i] && !(isNumber && otherIsNumber))
            return as[i] < bs[i] ? -1 : 1;
    }
    return as.size() == bs.size() ? a.compare(b) : as.size() < bs.size() ? -1 : 1;
}

int numberOf(const QString& name) {
    static const QRegularExpression humanSequence("^nc_0000(\\d\\d)\\.\\d+$");
    const QString key = chromosomeKey(name);
    const QRegularExpressionMatch match = humanSequence.match(key);
    const int number = match.captured(1).toInt();
    if (number >= 1 && number <= 24)
        return number;
    return key.toInt();
}

QString plainName(const QString& name, const QStringList& all, const QString& of25) {
    const QString key = chromosomeKey(name);
    int largest = 0;
    bool has26 = false;
    for (const QString& each : all) {
        largest = qMax(largest, numberOf(each));
        has26 |= numberOf(each) == 26;
    }
    const int number = numberOf(name);
    const bool isSequence = key.startsWith("nc_0000") && number > 0;
    if (number > 22 && (largest <= 26 || isSequence)) {
        if (number == 25)
            return has26 ? QStringLiteral("XY") : of25.isEmpty() ? key : of25;
        return number == 23 ? "X" : number == 24 ? "Y" : "MT";
    }
    if (number > 0)
        return QString::number(number);
    if (key == u"m" || key == u"mt" || key.startsWith("nc_012920"))
        return "MT";
    if (named.contains(key))
        return key.toUpper();
    static const QRegularExpression prefix("^chr(?=.)", QRegularExpression::CaseInsensitiveOption);
    return QString(name).remove(prefix);
}

} // namespace

QString chromosomeKey(const QString& name) {
    QString key = name.toLower();
    if (key.startsWith("chr") && key.size() > 3)
        key.remove(0, 3);
    static const QRegularExpression zeros("^0+(?=[0-9])");
    key.remove(zeros);
    return key == u"m" ? QStringLiteral("mt") : key;
}

bool comesBefore(const QString& a, const QString& b) {
    if (groupOf(a) != groupOf(b))
        return groupOf(a) < groupOf(b);
    if (groupOf(a) == 1)
        return named.indexOf(a) < named.indexOf(b);
    return naturally(a, b) < 0;
}

QString writtenName(const QString& name, const QStringList& all, const QString& of25,
                    ChromosomeNames names) {
    if (names == ChromosomeNames::Keep)
        return name;
    const QString plain = plainName(name, all, of25);
    const bool isUsual = groupOf(chromosomeKey(plain)) < 2;
    return names == ChromosomeNames::Chr && isUsual ? "chr" + plain : plain;
}

} // namespace plain
