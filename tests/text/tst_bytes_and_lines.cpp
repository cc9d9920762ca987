#include "line_fields.h"
#include "support/random.h"
#include "support/reading_check.h"
#include "text_blocks.h"
#include "utf8.h"

#include <QStringConverter>
#include <QTest>
#include <cstring>
#include <hwy/targets.h>
#include <iterator>
#include <vector>

// From bytes to lines: encodings, byte-order marks, carriage returns, line ends and lines of any
// length. Unless a row says otherwise, the file holds two points on chromosome 7.
class BytesAndLines : public QObject {
    Q_OBJECT

private slots:
    void encodings_data();
    void encodings();
    void carriageReturns_data();
    void carriageReturns();
    void lines_data();
    void lines();
    void labels_data();
    void labels();
    void lineNumbers();
    void partedTexts();
    void everyInstructionSet();
};

namespace {

const QString bothPointsScanned = QStringLiteral("7: 1 112 = 3 2");
const QString bothPointsLoaded = QStringLiteral("12345 23456 = 3 2");
const char* const noPointsScanned = "few genome points";
const char* const noPointsLoaded = "few chromosome points";
const char* const noColumns = "wrong columns";
const char* const noDelimiter = "no delimiter";

const QByteArray readable = "chr\tpos\tpval\n7\t12345\t0.001\n7\t23456\t0.01\n";

QByteArray marked(const QByteArray& mark, QStringConverter::Encoding encoding,
                  const QString& text = readable) {
    return mark + QByteArray(QStringEncoder(encoding).encode(text));
}

const QByteArray utf8Mark("\xef\xbb\xbf");
const QByteArray utf16LittleMark("\xff\xfe", 2);
const QByteArray utf16BigMark("\xfe\xff", 2);
const QByteArray utf32LittleMark("\xff\xfe\0\0", 4);
const QByteArray utf32BigMark("\0\0\xfe\xff", 4);

void addColumns() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("scan");
    QTest::addColumn<QString>("load");
}

void row(const char* name, const QByteArray& file, const QString& scan = bothPointsScanned,
         const QString& load = bothPointsLoaded) {
    QTest::newRow(name) << file << scan << load;
}

void faultRow(const char* name, const QByteArray& file, const char* fault) {
    row(name, file, fault, fault);
}

void check() {
    QFETCH(QByteArray, file);
    QFETCH(QString, scan);
    QFETCH(QString, load);
    checkReading(file, QStringLiteral("7"), scan, load);
}

} // namespace

void BytesAndLines::encodings_data() {
    using Converter = QStringConverter;
    addColumns();
    row("UTF-8 with a mark", utf8Mark + readable);
    row("UTF-8 with a mark, no header", utf8Mark + "7,12345,0.001\n7,23456,0.01\n");
    row("UTF-16, little-endian", marked(utf16LittleMark, Converter::Utf16LE));
    row("UTF-16, big-endian", marked(utf16BigMark, Converter::Utf16BE));
    row("UTF-32, little-endian", marked(utf32LittleMark, Converter::Utf32LE));
    row("UTF-32, big-endian", marked(utf32BigMark, Converter::Utf32BE));
    faultRow("UTF-16 without a mark", marked("", Converter::Utf16LE), noColumns);
    faultRow("UTF-8's mark alone", utf8Mark, noDelimiter);
    faultRow("UTF-16's mark alone", utf16LittleMark, noDelimiter);
    faultRow("UTF-32's mark alone", utf32BigMark, noDelimiter);
    faultRow("half a mark", utf8Mark.left(2), noDelimiter);
    faultRow("a second mark is text", utf8Mark + utf8Mark + "7,12345,0.001\n7,23456,0.01\n",
             noColumns);
    row("a mark within", "chr\tpos\tpval\n7\t12345\t0.001\n" + utf8Mark + "7\t23456\t0.01\n",
        QString::fromUtf8("7|\ufeff7: 1 2 = 3 2"), noPointsLoaded);
    row("carriage returns in UTF-16",
        marked(utf16LittleMark, Converter::Utf16LE,
               "chr\tpos\tpval\r\n7\t12345\t0.001\r\n7\t23456\t0.01\r\n"));
    row("a lone surrogate in UTF-16",
        marked(utf16LittleMark, Converter::Utf16LE,
               "chr\tpos\tpval\tx\n7\t12345\t0.001\t" + QString(QChar(0xd800)) +
                   "\n7\t23456\t0.01\t" + QString(QChar(0xdc00)) + "\n"));
    row("UTF-16 cut within a character", marked(utf16BigMark, Converter::Utf16BE).chopped(1));
    row("invalid UTF-8 in an unused column",
        "chr\tpos\tpval\tx\n7\t12345\t0.001\t\xff\xfe\xc3\n7\t23456\t0.01\t\xed\xa0\x80\n");
    row("invalid UTF-8 in a label", "chr\tpos\tpval\n7\xff\t12345\t0.001\n7\xfe\t23456\t0.01\n",
        QString::fromUtf8("7\ufffd: 1 112 = 3 2"), noPointsLoaded);
    row("an encoding cut short by a delimiter",
        "chr\tpos\tpval\n7\xe2\x82\t12345\t0.001\n7\xe2\x82\t23456\t0.01\n",
        QString::fromUtf8("7\ufffd\ufffd: 1 112 = 3 2"), noPointsLoaded);
    row("titles in another script",
        "chr\t\xc3\x84pos\xc3\xa9\tpval\n7\t12345\t0.001\n7\t23456\t0.01\n");
}

void BytesAndLines::encodings() {
    check();
}

void BytesAndLines::carriageReturns_data() {
    addColumns();
    row("before each line feed", QByteArray(readable).replace("\n", "\r\n"));
    row("two before each line feed", QByteArray(readable).replace("\n", "\r\r\n"));
    row("after each line feed", QByteArray(readable).replace("\n", "\n\r"));
    row("everywhere", QByteArray(readable).replace("", "\r"));
    row("within a number", "chr\tpos\tpval\n7\t12\r345\t0.\r001\n7\t23456\r\t\r0.01\n");
    row("within a label", "chr\tpos\tpval\n\r7\t12345\t0.001\n7\r\t23456\t0.01\n");
    row("within a title", "ch\rr\tp\ros\tp\rval\n7\t12345\t0.001\n7\t23456\t0.01\n");
    row("within NA", "chr\tpos\tpval\n7\t12345\t0.001\n7\t1\tN\rA\n7\t23456\t0.01\n");
    row("between the bytes of a character",
        "chr\tpos\tpval\n\xc3\r\x84\t12345\t0.001\n\xc3\x84\t23456\t0.01\n",
        QString::fromUtf8("\ufffd\ufffd|Ä: 1 2 = 3 2"), noPointsLoaded);
    row("an empty line", QByteArray(readable).replace("\n", "\r\n\r\n"));
    row("at the very end", readable + "\r");
    row("at the end of an unfinished line", readable.chopped(1) + "\r");
    row("many before a line", QByteArray(100, '\r') + readable);
    row("instead of line feeds", QByteArray(readable).replace("\n", "\r"), noPointsScanned,
        noPointsLoaded);
    faultRow("alone", "\r", noDelimiter);
    faultRow("many alone", QByteArray(100, '\r'), noDelimiter);
    faultRow("with line feeds alone", "\r\n\r\n", noDelimiter);
}

void BytesAndLines::carriageReturns() {
    check();
}

void BytesAndLines::lines_data() {
    addColumns();
    const QByteArray longText(100'000, 'x'), veryLongText(1'000'000, 'x');
    row("no line end at the end", readable.chopped(1));
    row("several line ends at the end", readable + "\n\n\n");
    row("a long title", "chr\tpos\tpval\t" + longText + "\n7\t12345\t0.001\n7\t23456\t0.01\n");
    row("a long field before the others",
        "x\tchr\tpos\tpval\n" + longText + "\t7\t12345\t0.001\n" + longText + "\t7\t23456\t0.01\n");
    row("a very long line without a line end",
        "chr\tpos\tpval\tx\n7\t12345\t0.001\n7\t23456\t0.01\t" + veryLongText);
    row("a very long line that is skipped",
        "chr\tpos\tpval\tx\n7\t12345\t0.001\n7\t1\tNA\t" + veryLongText + "\n7\t23456\t0.01\n");
    row("many columns", "chr\tpos\tpval" + QByteArray("\tx").repeated(5000) + "\n7\t12345\t0.001" +
                            QByteArray("\t1").repeated(5000) + "\n7\t23456\t0.01\n");
    row("many empty fields", "chr\tpos\tpval" + QByteArray(5000, '\t') + "\n7\t12345\t0.001" +
                                 QByteArray(5000, '\t') + "\n7\t23456\t0.01\n");
    row("many empty lines", QByteArray(readable).replace("\n", QByteArray(1000, '\n')));
    row("a number of many digits", "chr\tpos\tpval\n7\t" + QByteArray(10'000, '0') +
                                       "12345\t0.001\n7\t23456\t0." + QByteArray(10'000, '0') +
                                       "1e9999\n");
    faultRow("a file of one very long line", veryLongText, noDelimiter);
    row("a file of one very long line of fields", QByteArray("1\t").repeated(100'000) + "1",
        noPointsScanned, noPointsLoaded);
    row("other characters that break lines elsewhere",
        "chr\tpos\tpval\tx\n7\t12345\t0.001\t\v\f\x1c\xc2\x85\xe2\x80\xa8\n7\t23456\t0.01\n");
    row("zero bytes in an unused column",
        QByteArray("chr\tpos\tpval\tx\n7\t12345\t0.001\t?\n7\t23456\t0.01\t??\n")
            .replace('?', '\0'));
}

void BytesAndLines::lines() {
    check();
}

void BytesAndLines::labels_data() {
    QTest::addColumn<QString>("label");
    for (const char* label : {"1", "X", "chr22", " ", "7 7", "\"7\"", "NA",
                              "a label of forty characters and a few more", "染色體", "Хромосома",
                              "é", "🧬🧬", "İ", "\u200b"})
        QTest::newRow(label) << QString::fromUtf8(label);
    QTest::newRow("empty") << QString();
}

// Any text can be a label. It is kept unchanged, and a longer label that starts with it is another.
void BytesAndLines::labels() {
    QFETCH(QString, label);
    const QByteArray name = label.toUtf8();
    const QByteArray file = "chr\tpos\tpval\n" + name + "\t100\t0.1\n" + name + "\t200\t0.1\n" +
                            name + "x\t300\t0.1\n" + name + "x\t400\t0.1\n";
    checkReading(file, label, label + u'|' + label + QStringLiteral("x: 1 2 3 4 = 1 1 1 1"),
                 QStringLiteral("100 200 = 1 1"));
    checkReading(file, label + u'x', label + u'|' + label + QStringLiteral("x: 1 2 3 4 = 1 1 1 1"),
                 QStringLiteral("300 400 = 1 1"));
}

// Each piece counts its lines from one, empty ones and one without a line end included.
void BytesAndLines::lineNumbers() {
    LineFields lines;
    for (const char* piece : {"a b\n\nc\n", "a\n\n b"}) {
        const QByteArray padded = piece + QByteArray(TextBlocks::padding, '\n');
        lines.find({padded.constData(), std::strlen(piece)}, ' ');
        QCOMPARE(lines.lineCount(), 3U);
        for (size_t number = 0; number < 3; ++number) {
            QCOMPARE(lines.lineInPiece(), number);
            QVERIFY(lines.nextLine());
        }
        QVERIFY(!lines.nextLine());
        QCOMPARE(lines.lineInPiece(), 3U);
    }
    lines.rewind();
    QCOMPARE(lines.lineInPiece(), 0U);
}

// However a text is parted, its bytes are the same, and they become the same text again.
void BytesAndLines::partedTexts() {
    const QString text = QStringLiteral(u"\U0001F9EC\xd83e\u00e9a\xddec\U0001F9EC\xd83e");
    QByteArray whole;
    appendUtf8(text, whole);
    QCOMPARE(fromUtf8({whole.constData(), static_cast<size_t>(whole.size())}), text);
    for (qsizetype at = 0; at <= text.size(); ++at) {
        QByteArray parted;
        appendUtf8(QStringView(text).first(at), parted);
        appendUtf8(QStringView(text).sliced(at), parted);
        QCOMPARE(parted, whole);
    }
}

// Machines differ in their vectors; each kind that this one has finds the same fields.
void BytesAndLines::everyInstructionSet() {
    Random random(runSeed());
    QByteArray text(5000, 'x');
    for (char& character : text)
        character = random.oneOf({'a', '\t', ' ', '\n', ',', 'b', 'c', 'd'});
    const std::vector<int64_t> sets = hwy::SupportedAndGeneratedTargets();
    QVERIFY(!sets.empty());
    for (const int64_t set : sets) {
        hwy::SetSupportedTargetsForTest(set);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        const QByteArray padded = text + QByteArray(TextBlocks::padding, '\t');
        LineFields lines;
        lines.find({padded.constData(), static_cast<size_t>(text.size())}, '\t');
        QByteArrayList found;
        while (lines.nextLine())
            for (size_t i = 0; i < lines.fieldCount(); ++i)
                found.append(QByteArray(lines.field(i).data(), std::ssize(lines.field(i))));
        QByteArrayList expected;
        const QByteArray whole = text.endsWith('\n') ? text.chopped(1) : text;
        for (const QByteArray& line : whole.split('\n'))
            expected += line.split('\t');
        QVERIFY2(found == expected, hwy::TargetName(set));
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

QTEST_GUILESS_MAIN(BytesAndLines)
#include "tst_bytes_and_lines.moc"
