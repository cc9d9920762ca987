#include "plain_chromosomes.h"

#include "plain_titles.h"
#include "title_table.h"

#include <QRegularExpression>

namespace plain {

namespace {

const QStringList namedChromosomes{"x", "y", "z", "w", "xy", "mt", "m"};
const QStringList unplaced{"",       "0",  "-9",       ".",       "-",        "na",        "n/a",
                           "#na",    "nr", "nan",      "-nan",    "none",     "null",      "u",
                           "uextra", "un", "unplaced", "unknown", "unmapped", "unassigned"};

// 0 numbers, 1 X to MT, 2 other texts, 3 unplaced.
int groupOf(const QString& key) {
    if (unplaced.contains(key) || key.startsWith("un_"))
        return 3;
    if (key[0] >= u'0' && key[0] <= u'9')
        return 0;
    return namedChromosomes.contains(key) ? 1 : 2;
}

// The numbers in a text, made as long as any: then texts compare as their numbers do.
QString withLongNumbers(const QString& text) {
    static const QRegularExpression number("[0-9]+|[^0-9]+");
    QString result;
    auto pieces = number.globalMatch(text);
    while (pieces.hasNext()) {
        const QString piece = pieces.next().captured();
        result += piece[0] >= u'0' && piece[0] <= u'9' ? piece.rightJustified(40, u'0') : piece;
    }
    return result;
}

bool isWholeNumber(const QString& key) {
    static const QRegularExpression digits("^[0-9]+$");
    return digits.match(key).hasMatch();
}

// The human chromosome of a sequence such as NC_000001.10; 0 for none, 25 for the mitochondrial.
int humanSequence(const QString& name) {
    static const QRegularExpression form("^nc_(\\d{6})(\\.\\d+)?$");
    const int number = form.match(name.toLower()).captured(1).toInt();
    return number == 12920 ? 25 : number <= 24 ? number : 0;
}

} // namespace

QString chromosomeKey(const QString& name) {
    QString key = name;
    for (QChar& character : key)
        if (character >= u'A' && character <= u'Z')
            character = character.toLower();
    if (key.startsWith("chr") && key.size() > 3)
        key.remove(0, 3);
    static const QRegularExpression zeros("^0+(?=[0-9]+$)");
    key.remove(zeros);
    return key == u"m" ? QStringLiteral("mt") : key;
}

bool comesBefore(const QString& a, const QString& b) {
    if (groupOf(a) != groupOf(b))
        return groupOf(a) < groupOf(b);
    if (groupOf(a) == 1)
        return namedChromosomes.indexOf(a) < namedChromosomes.indexOf(b);
    const QString longA = withLongNumbers(a), longB = withLongNumbers(b);
    return longA == longB ? a < b : longA < longB;
}

ChromosomeWriter::ChromosomeWriter(const QStringList& names, const QStringList& titles,
                                   ChromosomeNames style)
    : m_style(style) {
    QStringList normal;
    for (const QString& title : titles)
        normal << normalTitle(title);
    bool isPlink = false, has26 = false;
    for (const auto& together : title_table::plink) {
        bool areAll = true;
        for (const std::string_view title : together)
            areAll &= title.empty() || normal.contains(fromData(title));
        isPlink |= areAll;
    }
    for (const QString& name : names) {
        const QString key = chromosomeKey(name);
        has26 |= key == u"26";
        m_isHuman &= !isWholeNumber(key) || (key.size() < 3 && key.toInt() <= 26);
    }
    if (has26 || isPlink)
        m_nameOf25 = "XY";
    else if (normal.contains(fromData(title_table::ssf)))
        m_nameOf25 = "MT";
}

QString ChromosomeWriter::plainName(const QString& name) const {
    const QStringList last{"X", "Y", "MT"};
    if (const int sequence = humanSequence(name); sequence > 0)
        return sequence > 22 ? last[sequence - 23] : QString::number(sequence);
    const QString key = chromosomeKey(name);
    if (m_isHuman && isWholeNumber(key) && key.toInt() > 22)
        return key == u"23" ? "X" : key == u"24" ? "Y" : key == u"25" ? m_nameOf25 : "MT";
    if (groupOf(key) < 2 && (isWholeNumber(key) || namedChromosomes.contains(key)))
        return key.toUpper();
    static const QRegularExpression prefix("^chr(?=.)", QRegularExpression::CaseInsensitiveOption);
    return key == u"0" ? key : QString(name).remove(prefix);
}

QString ChromosomeWriter::nameOf(const QString& name) const {
    if (m_style == ChromosomeNames::Keep)
        return name;
    const QString plain = plainName(name);
    if (m_style == ChromosomeNames::Plain)
        return plain;
    if (groupOf(chromosomeKey(plain)) > 1)
        return name;
    return plain == u"MT" ? QStringLiteral("chrM") : "chr" + plain;
}

} // namespace plain
