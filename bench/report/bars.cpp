#include "report/bars.h"

#include "report/programs.h"

#include <QFile>

namespace {

// Units of bars.tsv in those that judge() takes.
const QMap<QString, double> units{{"x", 1.0}, {"%", 0.01}, {"ms", 1e-3}, {"MB", 1e6}};

Bar parseBar(const QStringList& fields) {
    bool isNumber[3] = {};
    const Bar bar{fields.value(1) == "at most", fields.value(2).toDouble(&isNumber[0]),
                  fields.value(3).toDouble(&isNumber[1]), fields.value(4),
                  fields.value(5).toLongLong(&isNumber[2])};
    const bool isKnown =
        (bar.isAtMost || fields.value(1) == "at least") && units.contains(bar.unit);
    if (fields.size() != 7 || !isKnown || !isNumber[0] || !isNumber[1] || !isNumber[2])
        fail("not a bar: " + fields.join(u'\t'));
    return bar;
}

QString outcomeText(Verdict::Outcome outcome) {
    switch (outcome) {
    case Verdict::Outcome::Met:
        return "met";
    case Verdict::Outcome::Missed:
        return "**not met**";
    case Verdict::Outcome::NotJudged:
        break;
    }
    return "(not judged)";
}

} // namespace

QStringList Verdict::cells() const {
    return {measured, bar, outcomeText(outcome)};
}

Verdict Bar::judge(const QString& what, double measured, qint64 lines) const {
    const double inUnit = measured / units[unit];
    const double bar = limit + growth * static_cast<double>(lines) * 1e-6;
    const bool isMet = isAtMost ? inUnit <= bar : inUnit >= bar;
    return {what, threeDigits(inUnit) + ' ' + unit,
            QStringLiteral("at %1 %2 %3")
                .arg(isAtMost ? "most" : "least")
                .arg(bar, 0, 'g', 4)
                .arg(unit),
            lines < from ? Verdict::Outcome::NotJudged
            : isMet      ? Verdict::Outcome::Met
                         : Verdict::Outcome::Missed};
}

double Bar::ratio(const Samples& ours, const Samples& other) const {
    return isAtMost ? ours.median() / other.median() : other.median() / ours.median();
}

Bars::Bars(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        fail("cannot read " + fileName);
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts))
        if (!line.startsWith(u'#'))
            m_bars[line.section(u'\t', 0, 0)] = parseBar(line.split(u'\t'));
}

Bar Bars::operator[](const QString& name) const {
    if (!m_bars.contains(name))
        fail("no bar is named " + name);
    return m_bars[name];
}
