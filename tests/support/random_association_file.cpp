#include "support/random_association_file.h"

#include "support/random.h"

#include <QStringConverter>
#include <QStringList>

namespace {

// The texts between bars.
QStringList between(const char* texts) {
    return QString::fromUtf8(texts).split(u'|');
}

const QStringList labels =
    between("1|1|1|2|2|chr1|X|| |NA|10|01|1 |CHR1|chrX1|P|\"1\"|"
            "a long label of more than sixteen bytes|染色體|Хромосома|é|🧬") +
    QStringList{QChar(0xd800), QChar(0xdc00), QChar(0xfeff)};

const QStringList goodPValues =
    between("0.001|0.5|1|1e-300|5e-08|0.04999|1.45E-18|0.123456789012345|3.2e-5|8.88e-16|0.1|.25|"
            "1.|7e+0|0.000001|0.30102999566398120|12|4.5e-310|1e22|1e23|0.1e1|00.5|"
            "123456789012345678e-20");

const QStringList oddPValues =
    between("NA|na|N/A|nan|NaN|inf|-inf|Inf|+inf|infinity||0|0.0|0e0|-0|+0.5| 0.5|0.5 |-0.5|1e|1e+|"
            "e1|.|1e400|1e-400|2e-324|5e-324|0x10|1,5|1.7976931348623157e308|"
            "0.1234567890123456789012345678901234567890|12345678901234567890123456789|--1|1e-5e|"
            "1.2.3|\"0.5\"|NA |-|+|1e0000000000000000001|0e-99999|9007199254740993|"
            "0.00000000000000000000000000000000000000000000000000000000000000000001|٠|\u00a00.5|"
            "1e\u22125|0.5\u3000") +
    QStringList{QChar(0), QString("1") + QChar(0)};

const QStringList oddPositions =
    between("-5|+7|0|-0|007| 42|42 |1.0|1e3||x|2147483647|-2147483648|2147483648|-2147483649|"
            "99999999999999999999|NA|1,000|0x1f|- 5|--5|+-5|+|-|1_0|0000000000000000000000000012|"
            "4294967297|-00000000000000000007|٣|\u00a07") +
    QStringList{QString("1") + QChar(0) + "2", QString("5") + QChar(0)};

const QStringList goodTitles{"chr", "pos", "pval"};

const QStringList oddTitles =
    between("CHROM|Chromosome|POS|position|P|p|P-value|PVALUE|pval|prob|BP|MarkerID|SNP|some|id|"
            "beta||1|chrpos|posid|pvalpos|p-VAL|P |Pos|\"chr\"|0.5|p_value|İd|poſ|ＰＯＳ|é");

struct Layout {
    QChar delimiter;
    QString lineEnd;
    QStringList fill; // the fields of a usual line, as many as the file has columns
    int chromosome = 0;
    int position = 1;
    int pValue = 2;
};

QChar randomDelimiter(Random& random) {
    return random.oneOf({u'\t', u'\t', u' ', u','});
}

Layout randomLayout(Random& random, bool hasHeader) {
    Layout layout;
    layout.delimiter = randomDelimiter(random);
    layout.lineEnd = random.oneIn(3) ? QStringLiteral("\r\n") : QStringLiteral("\n");
    const int columns = random.between(3, 7);
    for (int column = 0; column < columns; ++column)
        layout.fill << QString::number(1000 + column);
    if (!hasHeader)
        return layout;
    layout.chromosome = random.below(columns);
    layout.position = (layout.chromosome + 1 + random.below(columns - 1)) % columns;
    do
        layout.pValue = random.below(columns);
    while (layout.pValue == layout.chromosome || layout.pValue == layout.position);
    return layout;
}

QString headerLine(Random& random, const Layout& layout) {
    QStringList titles = layout.fill;
    for (QString& title : titles)
        title = random.oneIn(12) ? random.oneOf(oddTitles) : QStringLiteral("x");
    titles[layout.chromosome] = goodTitles[0];
    titles[layout.position] = goodTitles[1];
    titles[layout.pValue] = goodTitles[2];
    for (QString& title : titles)
        if (random.oneIn(15))
            title = random.oneOf(oddTitles);
    return titles.join(layout.delimiter);
}

QString randomPosition(Random& random, int oddness) {
    if (random.oneIn(oddness))
        return random.oneOf(oddPositions);
    return QString::number(random.below(random.oneOf({100, 10000, 250000000})));
}

QString randomPValue(Random& random, int oddness) {
    if (random.oneIn(oddness))
        return random.oneOf(oddPValues);
    if (random.oneIn(4))
        return random.oneOf(goodPValues);
    return QString::number(random.fraction(), 'g', random.between(1, 17));
}

QString dataLine(Random& random, const Layout& layout, const QString& label, int oddness) {
    QStringList fields = layout.fill;
    fields[layout.chromosome] = label;
    fields[layout.position] = randomPosition(random, oddness);
    fields[layout.pValue] = randomPValue(random, oddness);
    if (random.oneIn(oddness * 2))
        fields.resize(random.below(static_cast<int>(fields.size())) + 1);
    if (random.oneIn(oddness))
        fields << QString(random.below(60), u'z');
    return fields.join(random.oneIn(oddness * 4) ? randomDelimiter(random) : layout.delimiter);
}

QString randomText(Random& random, QString& label) {
    const bool hasHeader = !random.oneIn(3);
    const Layout layout = randomLayout(random, hasHeader);
    const int oddness = random.oneOf({4, 15, 60, 1000});
    label = hasHeader ? random.oneOf(labels) : QString::number(random.below(3));
    QString text = hasHeader ? headerLine(random, layout) + layout.lineEnd : QString();
    QString current = label;
    for (int lines = random.below(random.oneOf({4, 12, 12, 40})); lines > 0; --lines) {
        if (random.oneIn(4))
            current = random.oneIn(2) ? label : random.oneOf(labels);
        if (!random.oneIn(oddness))
            text += dataLine(random, layout, current, oddness);
        text += random.oneIn(oddness * 2) ? QStringLiteral("\n") : layout.lineEnd;
    }
    if (random.oneIn(4))
        text.chop(static_cast<int>(layout.lineEnd.size()));
    return text;
}

QByteArray encoded(Random& random, const QString& text) {
    using Converter = QStringConverter;
    if (!random.oneIn(6)) {
        const QByteArray mark = random.oneIn(12) ? QByteArray("\xef\xbb\xbf") : QByteArray();
        return mark + text.toUtf8();
    }
    QStringEncoder encoder(
        random.oneOf({Converter::Utf8, Converter::Utf16LE, Converter::Utf16BE, Converter::Utf32LE,
                      Converter::Utf32BE, Converter::Latin1}),
        random.oneIn(8) ? Converter::Flag::Default : Converter::Flag::WriteBom);
    return encoder.encode(text);
}

// A slip of the disk or of the editor.
void damage(Random& random, QByteArray& bytes) {
    static const QByteArray oddBytes("\r\r\n\0\xff\xc3\xe2\xed\xa0\x80\xf4\x90 \t,\"", 17);
    for (int slips = random.between(1, 3); slips > 0 && !bytes.isEmpty(); --slips) {
        const int place = random.below(static_cast<int>(bytes.size()));
        switch (random.below(4)) {
        case 0:
            bytes.insert(place, random.oneOf(oddBytes));
            break;
        case 1:
            bytes.remove(place, 1);
            break;
        case 2:
            bytes[place] = random.oneOf(oddBytes);
            break;
        default:
            bytes.insert(place, '\r');
        }
    }
}

} // namespace

RandomAssociationFile randomAssociationFile(Random& random) {
    RandomAssociationFile file;
    file.bytes = encoded(random, randomText(random, file.label));
    if (random.oneIn(5))
        damage(random, file.bytes);
    if (random.oneIn(20))
        file.bytes.truncate(random.below(static_cast<int>(file.bytes.size()) + 1));
    return file;
}
