#include "number_fields.h"
#include "number_text.h"
#include "support/random.h"
#include "support/reading.h"
#include "support/reading_check.h"

#include <QTest>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

// Which texts are numbers, and with which value.
class NumberTexts : public QObject {
    Q_OBJECT

private slots:
    void goodPValues_data();
    void goodPValues();
    void badPValues_data();
    void badPValues();
    void goodPositions_data();
    void goodPositions();
    void badPositions_data();
    void badPositions();
    void firstLineOfNumbers_data();
    void firstLineOfNumbers();
    void everyCharacterInEveryPlace_data();
    void everyCharacterInEveryPlace();
    void plainTexts_data();
    void plainTexts();
    void randomTexts();
    void writtenNumbers_data();
    void writtenNumbers();
    void randomWrittenNumbers();
};

namespace {

const QString bothSkipped = QStringLiteral("200 300 = 1 1");
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

QTestData& row(const char* text) {
    const QString name = QString::fromUtf8(text);
    return QTest::newRow(qPrintable(name.toHtmlEscaped() + u'.')) << name;
}

template <typename... Texts>
void rows(Texts... texts) {
    (row(texts), ...);
}

template <typename Number, typename... Texts>
void rowsOf(Number number, Texts... texts) {
    ((row(texts) << number), ...);
}

QByteArray fileOf(const QString& position, const QString& pValue) {
    return "chr\tpos\tpval\n1\t" + position.toUtf8() + '\t' + pValue.toUtf8() +
           "\n1\t200\t0.1\n1\t300\t0.1\n";
}

void checkFault(const QByteArray& file, const char* fault) {
    checkReading(file, QStringLiteral("1"), QString(fault), QString(fault));
}

// Compares bits, so that zeros differ by sign and NaN equals itself.
template <typename Number>
bool isSame(std::optional<Number> number, Number expected, bool isNumber) {
    return number.has_value() == isNumber &&
           (!isNumber || std::memcmp(&*number, &expected, sizeof expected) == 0);
}

QByteArray written(double number) {
    char text[numberTextRoom];
    return {text, writeNumber(number, text) - text};
}

std::string_view view(const QByteArray& text) {
    return {text.constData(), static_cast<size_t>(text.size())};
}

bool isReadLikeQt(const QByteArray& text) {
    bool isInteger = false, isReal = false;
    const int integer = QString::fromUtf8(text).toInt(&isInteger);
    const double real = QString::fromUtf8(text).toDouble(&isReal);
    const bool isPlainInteger = plainInteger(view(text)).has_value();
    const bool isPlainReal = plainReal(view(text)).has_value();
    return isSame(toInteger(view(text)), integer, isInteger) &&
           isSame(toReal(view(text)), real, isReal) &&
           (!isPlainInteger || isSame(plainInteger(view(text)), integer, isInteger)) &&
           (!isPlainReal || isSame(plainReal(view(text)), real, isReal));
}

// Of any size that a double has, or a p-value's; sometimes without its leading zero.
QByteArray randomNumber(Random& random) {
    const double number =
        random.oneIn(2) ? random.fraction() : std::bit_cast<double>(random.bits() >> 1);
    const QByteArray text =
        QByteArray::number(number, random.oneOf({'e', 'E', 'f', 'g', 'G'}), random.below(20));
    return text.startsWith("0.") && random.oneIn(2) ? text.mid(1) : text;
}

QByteArray randomCharacters(Random& random) {
    QByteArray text(random.below(14), '\0');
    for (char& character : text)
        character = random.oneOf(std::string_view("00112233445566778899...eE+-  naif\xc3\xa9"));
    return text;
}

} // namespace

void NumberTexts::goodPValues_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    rowsOf(1.0, "1", "1.", "0.99999999999999999",
           "100000000000000000000000000000000000000000000000000e-50");
    rowsOf(0.5, "0.5", ".5", "00.5", "+0.5", " 0.5", "0.5 ", "  0.5\v ", "\u00a00.5", "\u20030.5",
           "0.5\u202f");
    row("1.e-3") << 1e-3;
    row("00012") << 12.0;
    row("+.5e-1") << 0.05;
    rowsOf(1e-5, "1e\u22125", "1e-05");
    rowsOf(1e5, "1e5", "1E5", "1e+5");
    row("1.45E-18") << 1.45e-18;
    row("8.8806139889581279E-034") << 8.8806139889581279e-34;
    row("4.55003e-02") << 0.0455003;
    row("1e22") << 1e22;
    row("1e23") << 1e23;
    row("1e-22") << 1e-22;
    row("1e-23") << 1e-23;
    row("123456789e-9") << 0.123456789;
    row("12345678e-30") << 12345678e-30;
    row("0.1") << 0.1;
    row("0.3") << 0.3;
    row("0.9999999999999999") << 0.9999999999999999;
    row("0.12345678901234567") << 0.12345678901234567;
    row("0.123456789012345678901234567890123456789") << 0.12345678901234567890123456789;
    row("9007199254740991") << 9007199254740991.0;
    rowsOf(9007199254740992.0, "9007199254740992", "9007199254740993");
    row("9007199254740993.00000001") << 9007199254740994.0;
    row("9007199254740993e-16") << 0.9007199254740993;
    row("123456789012345678901234567890") << 1.2345678901234568e29;
    row("99999999999999999999999") << 99999999999999999999999.0;
    row("18446744073709551615") << 18446744073709551615.0;
    row("18446744073709551616") << 18446744073709551616.0;
    row("0.00000000000000000000000000000000000000000000000001") << 1e-50;
    row("1e-300") << 1e-300;
    row("1e-308") << 1e-308;
    row("2.2250738585072014e-308") << 2.2250738585072014e-308;
    row("2.225073858507201e-308") << 2.225073858507201e-308;
    row("1e-320") << 1e-320;
    rowsOf(5e-324, "4.9406564584124654e-324", "2.4703282292062328e-324");
    row("1.7976931348623157e308") << 1.7976931348623157e308;
    row("5.0") << 5.0;
    rowsOf(notANumber, "-1", "-1e-300", "nan", "NaN", "NAN", "-inf");
    rowsOf(infinity, "inf", "Inf", "+inf");
}

void NumberTexts::goodPValues() {
    QFETCH(QString, text);
    QFETCH(double, number);
    const Points points{{100, 200, 300}, {-std::log10(number), 1.0, 1.0}};
    const QByteArray file = fileOf(QStringLiteral("100"), text);
    const Result<Points> loaded = load(file, QStringLiteral("1"));
    QVERIFY2(isSame(loaded, Result<Points>(points)), qPrintable(told(loaded)));
    QVERIFY(isSame(plainLoad(file, QStringLiteral("1")), loaded));
    const Result<GenomeScan> scanned = scan(file);
    QVERIFY2(std::holds_alternative<GenomeScan>(scanned), qPrintable(told(scanned)));
    QVERIFY(
        isSame(Points{{}, std::get<GenomeScan>(scanned).points.values}, Points{{}, points.values}));
}

void NumberTexts::badPValues_data() {
    QTest::addColumn<QString>("text");
    rows("", " ", "x", ".", "-", "+", "e", "e5", "1e", "1e+", "1e-", "1e5e", "1e1.5", "1.2.3",
         "--1", "+-1", "1-", "1 2", "1,5", "1,000", "1_0", "1f", "1d5", "0x10", "0x1p-3", "0b11",
         "1%", "$1", "'1'", "\"1\"", "1e400", "1.7976931348623159e308", "1e99999999999", "1e-400",
         "2e-324", "2.4703282292062327e-324", "1e-99999999999", "infinity", "in", "infx", "nanx",
         "-nan", "+nan", "nan(1)", "na", "N/A", "Na", "NA ", " NA", "null", "None", "\u0661",
         "\uff11", "0\u066b5", "\u200b1", "<1e-5", "1e -5", "1 e-5", "0.5\u0301");
    QTest::newRow("zero byte") << QString(QChar(0));
    QTest::newRow("zero byte after") << QStringLiteral("1") + QChar(0);
    QTest::newRow("zero byte within") << QStringLiteral("0.") + QChar(0) + QStringLiteral("5");
    QTest::newRow("invalid UTF-8") << QString::fromUtf8("\xff\xfe");
}

void NumberTexts::badPValues() {
    QFETCH(QString, text);
    checkFault(fileOf(QStringLiteral("100"), text), "bad p-value");
}

void NumberTexts::goodPositions_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    rowsOf(0, "0", "-0", "+0");
    rowsOf(7, "7", "+7", " 7", "7  ", "\v7\f", "007");
    rowsOf(-7, "-7", "-0000000000000000000000000007");
    row("0000000000000000000000000123456789") << 123456789;
    row("248956422") << 248956422;
    row("999999999") << 999999999;
    row("1000000000") << 1000000000;
    row("2147483646") << 2147483646;
    rowsOf(2147483647, "2147483647", "+2147483647");
    row("-2147483647") << -2147483647;
    row("-2147483648") << std::numeric_limits<int>::min();
    // QString::toInt() stops at a zero byte.
    QTest::newRow("zero byte after") << QStringLiteral("12") + QChar(0) << 12;
    QTest::newRow("zero byte within") << QStringLiteral("1") + QChar(0) + QStringLiteral("2") << 1;
}

void NumberTexts::goodPositions() {
    QFETCH(QString, text);
    QFETCH(int, number);
    const QByteArray file = fileOf(text, QStringLiteral("0.1"));
    const Result<Points> expected = Points{{number, 200, 300}, {1.0, 1.0, 1.0}};
    const Result<Points> loaded = load(file, QStringLiteral("1"));
    QVERIFY2(isSame(loaded, expected), qPrintable(told(loaded)));
    QVERIFY(isSame(plainLoad(file, QStringLiteral("1")), expected));
    const Result<GenomeScan> scanned = scan(file);
    QVERIFY2(isSame(scanned, plainScan(file)), qPrintable(told(scanned)));
    const int unit = number / 100;
    const QList<int> coordinates{1, 3 - unit, 4 - unit};
    QCOMPARE(std::get<GenomeScan>(scanned).points.positions, coordinates);
}

void NumberTexts::badPositions_data() {
    QTest::addColumn<QString>("text");
    rows("", " ", "x", "-", "+", "- 5", "--5", "+-5", "-+5", "5-", "1 2", "1.0", "12345.0", "1.5e6",
         "1e3", "1.", ".5", "1,000", "1_000", "0x1f", "1f", "NA", "nan", "inf", "chr1",
         "2147483648", "-2147483649", "4294967296", "4294967297", "9223372036854775808",
         "18446744073709551617", "99999999999999999999999999999999", "21474836470", "\u0663",
         "\uff11", "\"5\"", "\u00a07", "5\u2003");
    QTest::newRow("zero byte") << QString(QChar(0));
}

void NumberTexts::badPositions() {
    QFETCH(QString, text);
    checkFault(fileOf(text, QStringLiteral("0.1")), "bad position");
    checkReading(fileOf(text, QStringLiteral("NA")), QStringLiteral("1"),
                 QStringLiteral("1: 1 2 = 1 1"), bothSkipped);
}

// A first line with any field that is no number is a header.
void NumberTexts::firstLineOfNumbers_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("isNumber");
    rowsOf(true, "1", "+1", " 1 ", "1.5e-7", "nan", "inf", "-inf", "99999999999999999999",
           "\u00a01");
    rowsOf(false, "1e400", "1e-400", "0x10", "1e", "NA", "-nan", "\u0661", "1,5", "");
    QTest::newRow("an integer with a zero byte") << QStringLiteral("1") + QChar(0) << true;
    QTest::newRow("a fraction with a zero byte") << QStringLiteral("1.5") + QChar(0) << false;
}

void NumberTexts::firstLineOfNumbers() {
    QFETCH(QString, field);
    QFETCH(bool, isNumber);
    const QByteArray file = "1\t100\t0.1\t" + field.toUtf8() + "\n1\t200\t0.1\n";
    const QString noColumns = QStringLiteral("wrong columns");
    checkReading(file, QStringLiteral("1"), isNumber ? QStringLiteral("1: 1 2 = 1 1") : noColumns,
                 isNumber ? QStringLiteral("100 200 = 1 1") : noColumns);
}

void NumberTexts::everyCharacterInEveryPlace_data() {
    QTest::addColumn<QByteArray>("digits");
    for (const char* digits : {"12", "1234", "12345678", "123456789", "1234567890", "0.1234",
                               "0.12345678", "0.123456789", "1.5e-08", "12.5E+10"})
        QTest::newRow(digits) << QByteArray(digits);
}

// Digits are converted several at a time: a neighbour of theirs must not pass for one.
void NumberTexts::everyCharacterInEveryPlace() {
    QFETCH(QByteArray, digits);
    for (qsizetype place = 0; place < digits.size(); ++place) {
        for (char character = 1; character < 127; ++character) {
            QByteArray text = digits;
            text[place] = character;
            QVERIFY2(isReadLikeQt(text), text.constData());
        }
    }
}

// Files of ordinary numbers must not depend on Qt's conversions, which are many times slower.
void NumberTexts::plainTexts_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isPlainInteger");
    QTest::addColumn<bool>("isPlainReal");
    const auto addRows = [](bool isPlainInteger, bool isPlainReal, auto... texts) {
        ((row(texts) << isPlainInteger << isPlainReal), ...);
    };
    addRows(true, true, "7", "007", "1234", "12345678", "123456789", "1234567890", "2147483647");
    addRows(true, false, "0", "-0", "-7", "-123456789", "-2147483648");
    addRows(false, true, "0.569847", "1.0", "0.5", "0.1234", "0.00000001", "0.123456789", "12.5",
            ".5", ".0016563", ".1234", ".12345678", ".123456789", "5.", "1.e-3", ".5e-8", "1e5",
            "1e-05", "1.45E-18", "4.55003e-02", "8.8806139889581279E-034", "1e22", "1e23", "1e+300",
            "0.12345678901234567", "9007199254740993", "123456789012345678901234567890",
            "2147483648", "2.2250738585072014e-308", "1.7976931348623157e308", "0.0000",
            ".00000000");
    addRows(false, false, "", " ", ".", "e", "-", "e5", ".e5", "1e", "1e+", "1.2.3", "+7", "+0.5",
            "-0.5", "-.1234", " 7", "7 ", " 0.5", "0.5 ", "1,5", "1_0", "0x10", "NA", "nan", "inf",
            "1e\u22125", "\u0661", "1e400", "1e-320", "2.225073858507201e-308", "1e-400", "-1e400",
            "1.7976931348623159e308");
    const auto half = [](qsizetype length) { return "0.5" + QByteArray(length - 3, '0'); };
    addRows(false, true, half(100).constData());
    addRows(false, false, half(101).constData());
}

void NumberTexts::plainTexts() {
    QFETCH(QString, text);
    QFETCH(bool, isPlainInteger);
    QFETCH(bool, isPlainReal);
    const QByteArray field = text.toUtf8();
    QVERIFY(isSame(plainInteger(view(field)), text.toInt(), isPlainInteger));
    QVERIFY(isSame(plainReal(view(field)), text.toDouble(), isPlainReal));
    QVERIFY(isReadLikeQt(field));
}

void NumberTexts::randomTexts() {
    Random random(runSeed());
    for (int i = randomCases(200'000); i > 0; --i) {
        const QByteArray text = random.oneIn(2) ? randomNumber(random) : randomCharacters(random);
        QVERIFY2(isReadLikeQt(text), text.constData());
    }
}

void NumberTexts::writtenNumbers_data() {
    QTest::addColumn<double>("number");
    const auto add = [](double number) { QTest::addRow("%.17g", number) << number; };
    for (const double power :
         {1e-17, 1e-16, 1e-15, 1e-5, 1e-4, 1e-3, 0.01, 0.1, 1.0, 10.0, 1e5, 1e6})
        for (const double factor : {1.0, 1.0000005, 0.9999995, 0.99999949999, 1.23456, 3.333335})
            add(power * factor);
    for (const double number : {infinity, notANumber, 0.0, -0.0, -1.5, 4.94065645841247e-324})
        add(number);
}

void NumberTexts::writtenNumbers() {
    QFETCH(const double, number);
    QCOMPARE(written(number), QByteArray::number(number, 'g', 6));
}

void NumberTexts::randomWrittenNumbers() {
    Random random(runSeed());
    for (int i = randomCases(200'000); i > 0; --i) {
        const int digits = random.between(1, 7); // so that some have fewer than six
        const QByteArray text = QByteArray::number(
            random.fraction() * std::pow(10.0, random.between(-20, 8)), 'g', digits);
        const double number =
            random.oneIn(9) ? std::bit_cast<double>(random.bits()) : text.toDouble();
        QCOMPARE(written(number), QByteArray::number(number, 'g', 6));
    }
}

QTEST_GUILESS_MAIN(NumberTexts)
#include "tst_number_texts.moc"
