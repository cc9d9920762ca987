#include "report/bars.h"

#include "report/programs.h"

namespace {

const QString atMost = "at most", atLeast = "at least";

// Units of bars.tsv in those that judge() takes.
const QMap<QString, double> units{{"x", 1.0}, {"%", 0.01}, {"ms", 1e-3}, {"MB", 1e6}};

double number(const QString& field) {
    bool isNumber = false;
    const double number = field.toDouble(&isNumber);
    if (!isNumber)
        fail("not a number: " + field);
    return number;
}

Bar parseBar(const QStringList& fields) {
    if (fields.size() != 7 || (fields[1] != atMost && fields[1] != atLeast) ||
        !units.contains(fields[4]))
        fail("not a bar: " + fields.join(u'\t'));
    return {fields[1], number(fields[2]), number(fields[3]), fields[4],
            static_cast<qint64>(number(fields[5]))};
}

} // namespace

QStringList Verdict::cells() const {
    return {measured, bar, !met ? "(not judged)" : *met ? "met" : "**not met**"};
}

Verdict Bar::judge(const QString& what, double measured, qint64 lines) const {
    const double inUnit = measured / units[unit];
    const double bar = limit + growth * static_cast<double>(lines) * 1e-6;
    Verdict verdict{what,
                    threeDigits(inUnit) + ' ' + unit,
                    QStringLiteral("%1 %2 %3").arg(relation).arg(bar, 0, 'g', 4).arg(unit),
                    {}};
    if (lines >= from)
        verdict.met = relation == atMost ? inUnit <= bar : inUnit >= bar;
    return verdict;
}

double Bar::ratio(const Samples& ours, const Samples& other) const {
    return relation == atMost ? ours.median() / other.median() : other.median() / ours.median();
}

Bars::Bars(const QString& fileName) {
    const QString text = QString::fromUtf8(contentOf(fileName));
    for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts))
        if (!line.startsWith(u'#'))
            m_bars[line.section(u'\t', 0, 0)] = parseBar(line.split(u'\t'));
}

Bar Bars::operator[](const QString& name) const {
    if (!m_bars.contains(name))
        fail("no bar is named " + name);
    return m_bars[name];
}
