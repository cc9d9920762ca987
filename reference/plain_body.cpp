#include "plain_body.h"

#include "plain_p.h"

#include <QSet>
#include <utility>

namespace plain {

namespace {

// The first rows without empty fields at their end, and without a last one that may be cut short.
QList<qsizetype> fieldCounts(QList<QStringList> rows, qsizetype titles) {
    QList<qsizetype> counts;
    for (QStringList& fields : rows) {
        while (fields.size() > titles && fields.last().isEmpty())
            fields.removeLast();
        counts << fields.size();
    }
    if (counts.size() > 1 && counts.size() <= linesCompared && counts.last() < titles)
        counts.removeLast();
    return counts.mid(0, linesCompared);
}

} // namespace

bool bodyAgrees(QList<QStringList> rows, qsizetype titles, bool endsInList, bool mayBeLong) {
    int agreeing = 0, shorter = 0, longer = 0;
    const QList<qsizetype> counts = fieldCounts(std::move(rows), titles);
    for (const qsizetype count : counts) {
        agreeing += count == titles || (count > titles && endsInList) ? 1 : 0;
        shorter += count < titles ? 1 : 0;
        longer += count > titles && !endsInList ? 1 : 0;
    }
    return agreeing > shorter && (longer == 0 || (mayBeLong && longer * 10 <= counts.size()));
}

bool haveOneFieldMore(QList<QStringList> rows, qsizetype titles) {
    const QList<qsizetype> counts = fieldCounts(std::move(rows), titles);
    return counts.count(titles + 1) == counts.size();
}

bool startWithRowNames(const QStringList& lines, const QList<QStringList>& rows) {
    bool areInQuotes = true, areMarkers = true;
    for (const QString& line : lines)
        areInQuotes &= line.startsWith(u'"');
    bool areNumbered = decimal(rows.first().first()).isFinite;
    for (qsizetype i = 0; i < qMin(rows.size(), linesCompared); ++i) {
        const QString name = rows[i].value(0);
        areMarkers &= name.startsWith("rs") && decimal(name.mid(2)).isFinite;
        areNumbered &= i == 0 || name.toLongLong() == rows[i - 1].value(0).toLongLong() + 1;
    }
    return areNumbered || areInQuotes || areMarkers;
}

bool startWithNumbersInQuotes(const QStringList& lines, const QList<QStringList>& rows) {
    QSet<QString> names;
    const qsizetype compared = qMin(rows.size(), linesCompared);
    for (qsizetype i = 0; i < compared; ++i) {
        const bool isAlone = lines[i].count(u'"') < 2 * rows[i].size();
        if (!lines[i].startsWith(u'"') || !isAlone || rows[i].first().toLongLong() < 1)
            return false;
        names << rows[i].first();
    }
    return compared > 1 && names.size() == compared;
}

} // namespace plain
