#include "number_fields.h"
#include "support/reading.h"
#include "support/reading_check.h"

#include <QTest>
#include <cmath>
#include <cstring>
#include <limits>

// What is a number, and which: every text that somebody's tool may write, or nobody's.
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
};

namespace {

const QString bothSkipped = QStringLiteral("200 300 = 1 1");
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

QByteArray fileOf(const QString& position, const QString& pValue) {
    return "chr\tpos\tpval\n1\t" + position.toUtf8() + '\t' + pValue.toUtf8() +
           "\n1\t200\t0.1\n1\t300\t0.1\n";
}

void checkFault(const QByteArray& file, const char* fault) {
    checkReading(file, QStringLiteral("1"), QString(fault), QString(fault));
}

// The same bits, so that a zero keeps its sign and what is not a number is the same as itself.
template <typename Number>
bool isSame(std::optional<Number> number, Number expected, bool isNumber) {
    return number.has_value() == isNumber &&
           (!isNumber || std::memcmp(&*number, &expected, sizeof expected) == 0);
}

} // namespace

void NumberTexts::goodPValues_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    const auto row = [](const char* text, double number) {
        QTest::newRow(qPrintable(QString::fromUtf8(text).toHtmlEscaped()))
            << QString::fromUtf8(text) << number;
    };
    row("1", 1.0);
    row("0.5", 0.5);
    row(".5", 0.5);
    row("1.", 1.0);
    row("1.e-3", 1e-3);
    row("00.5", 0.5);
    row("00012", 12.0);
    row("+0.5", 0.5);
    row("+.5e-1", 0.05);
    row(" 0.5", 0.5);
    row("0.5 ", 0.5);
    row("  0.5\v ", 0.5);
    row("\u00a0"
        "0.5",
        0.5); // no-break space
    row("\u2003"
        "0.5",
        0.5);               // em space
    row("0.5\u202f", 0.5);  // narrow no-break space
    row("1e\u22125", 1e-5); // minus sign
    row("1e5", 1e5);
    row("1E5", 1e5);
    row("1e+5", 1e5);
    row("1e-05", 1e-5);
    row("1.45E-18", 1.45e-18);
    row("8.8806139889581279E-034", 8.8806139889581279e-34);
    row("4.55003e-02", 0.0455003);
    row("1e22", 1e22);
    row("1e23", 1e23);
    row("1e-22", 1e-22);
    row("1e-23", 1e-23);
    row("123456789e-9", 0.123456789);
    row("12345678e-30", 12345678e-30);
    row("0.1", 0.1);
    row("0.3", 0.3);
    row("0.9999999999999999", 0.9999999999999999);
    row("0.99999999999999999", 1.0);
    row("0.12345678901234567", 0.12345678901234567);
    row("0.123456789012345678901234567890123456789", 0.12345678901234567890123456789);
    row("9007199254740991", 9007199254740991.0);
    row("9007199254740992", 9007199254740992.0);
    row("9007199254740993", 9007199254740992.0);
    row("9007199254740993.00000001", 9007199254740994.0);
    row("9007199254740993e-16", 0.9007199254740993);
    row("123456789012345678901234567890", 1.2345678901234568e29);
    row("99999999999999999999999", 99999999999999999999999.0);
    row("18446744073709551615", 18446744073709551615.0);
    row("18446744073709551616", 18446744073709551616.0);
    row("0.00000000000000000000000000000000000000000000000001", 1e-50);
    row("100000000000000000000000000000000000000000000000000e-50", 1.0);
    row("1e-300", 1e-300);
    row("1e-308", 1e-308);
    row("2.2250738585072014e-308", 2.2250738585072014e-308);
    row("2.225073858507201e-308", 2.225073858507201e-308);
    row("1e-320", 1e-320);
    row("4.9406564584124654e-324", 5e-324);
    row("2.4703282292062328e-324", 5e-324);
    row("1.7976931348623157e308", 1.7976931348623157e308);
    row("5.0", 5.0);
    row("-1", notANumber);
    row("-1e-300", notANumber);
    row("nan", notANumber);
    row("NaN", notANumber);
    row("NAN", notANumber);
    row("inf", infinity);
    row("Inf", infinity);
    row("+inf", infinity);
    row("-inf", notANumber);
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
    for (const char* text : {"",
                             " ",
                             "x",
                             ".",
                             "-",
                             "+",
                             "e",
                             "e5",
                             "1e",
                             "1e+",
                             "1e-",
                             "1e5e",
                             "1e1.5",
                             "1.2.3",
                             "--1",
                             "+-1",
                             "1-",
                             "1 2",
                             "1,5",
                             "1,000",
                             "1_0",
                             "1f",
                             "1d5",
                             "0x10",
                             "0x1p-3",
                             "0b11",
                             "1%",
                             "$1",
                             "'1'",
                             "\"1\"",
                             "1e400",
                             "1.7976931348623159e308",
                             "1e99999999999",
                             "1e-400",
                             "2e-324",
                             "2.4703282292062327e-324",
                             "1e-99999999999",
                             "infinity",
                             "in",
                             "infx",
                             "nanx",
                             "-nan",
                             "+nan",
                             "nan(1)",
                             "na",
                             "N/A",
                             "Na",
                             "NA ",
                             " NA",
                             "null",
                             "None",
                             "\u0661" /* Arabic one */,
                             "\uff11" /* fullwidth one */,
                             "0\u066b"
                             "5",
                             "\u200b"
                             "1",
                             "<1e-5",
                             "1e -5",
                             "1 e-5",
                             "0.5\u0301"})
        QTest::newRow(qPrintable(QString::fromUtf8(text).toHtmlEscaped() + u'.'))
            << QString::fromUtf8(text);
    QTest::newRow("zero byte") << QString(QChar(0));
    QTest::newRow("zero byte behind") << QStringLiteral("1") + QChar(0);
    QTest::newRow("zero byte within") << QStringLiteral("0.") + QChar(0) + QStringLiteral("5");
    QTest::newRow("no text at all") << QString::fromUtf8("\xff\xfe");
}

void NumberTexts::badPValues() {
    QFETCH(QString, text);
    checkFault(fileOf(QStringLiteral("100"), text), "bad p-value");
}

void NumberTexts::goodPositions_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    const auto row = [](const char* text, int number) {
        QTest::newRow(text) << QString::fromUtf8(text) << number;
    };
    row("0", 0);
    row("-0", 0);
    row("+0", 0);
    row("7", 7);
    row("+7", 7);
    row("-7", -7);
    row(" 7", 7);
    row("7  ", 7);
    row("\v7\f", 7);
    row("007", 7);
    row("-0000000000000000000000000007", -7);
    row("0000000000000000000000000123456789", 123456789);
    row("248956422", 248956422);
    row("999999999", 999999999);
    row("1000000000", 1000000000);
    row("2147483646", 2147483646);
    row("2147483647", 2147483647);
    row("+2147483647", 2147483647);
    row("-2147483647", -2147483647);
    row("-2147483648", std::numeric_limits<int>::min());
    // The toolkit's conversion ends at a zero byte.
    QTest::newRow("zero byte behind") << QStringLiteral("12") + QChar(0) << 12;
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
    for (const char* text : {"",
                             " ",
                             "x",
                             "-",
                             "+",
                             "- 5",
                             "--5",
                             "+-5",
                             "-+5",
                             "5-",
                             "1 2",
                             "1.0",
                             "12345.0",
                             "1.5e6",
                             "1e3",
                             "1.",
                             ".5",
                             "1,000",
                             "1_000",
                             "0x1f",
                             "1f",
                             "NA",
                             "nan",
                             "inf",
                             "chr1",
                             "2147483648",
                             "-2147483649",
                             "4294967296",
                             "4294967297",
                             "9223372036854775808",
                             "18446744073709551617",
                             "99999999999999999999999999999999",
                             "21474836470",
                             "\u0663",
                             "\uff11",
                             "\"5\"",
                             "\u00a0"
                             "7" /* blanks that a real number may have */,
                             "5\u2003"})
        QTest::newRow(qPrintable(QString::fromUtf8(text).toHtmlEscaped() + u'.'))
            << QString::fromUtf8(text);
    QTest::newRow("zero byte") << QString(QChar(0));
}

void NumberTexts::badPositions() {
    QFETCH(QString, text);
    checkFault(fileOf(text, QStringLiteral("0.1")), "bad position");
    checkReading(fileOf(text, QStringLiteral("NA")), QStringLiteral("1"),
                 QStringLiteral("1: 1 2 = 1 1"), bothSkipped);
}

// A number anywhere on the first line is one by the same rules, and one text makes a header.
void NumberTexts::firstLineOfNumbers_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("isNumber");
    const auto row = [](const char* text, bool isNumber) {
        QTest::newRow(text) << QString::fromUtf8(text) << isNumber;
    };
    row("1", true);
    row("+1", true);
    row(" 1 ", true);
    row("1.5e-7", true);
    row("nan", true);
    row("inf", true);
    row("-inf", true);
    row("99999999999999999999", true);
    row("\u00a0"
        "1",
        true);
    row("1e400", false);
    row("1e-400", false);
    row("0x10", false);
    row("1e", false);
    row("NA", false);
    row("-nan", false);
    row("\u0661", false);
    row("1,5", false);
    row("", false);
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

// Digits that are calculated with several at once could take a neighbour of theirs for one more.
void NumberTexts::everyCharacterInEveryPlace() {
    QFETCH(QByteArray, digits);
    for (qsizetype place = 0; place < digits.size(); ++place) {
        for (char character = 1; character < 127; ++character) {
            QByteArray text = digits;
            text[place] = character;
            bool isInteger = false, isReal = false;
            const int integer = QString::fromUtf8(text).toInt(&isInteger);
            const double real = QString::fromUtf8(text).toDouble(&isReal);
            const std::string_view field(text.constData(), static_cast<size_t>(text.size()));
            QVERIFY2(isSame(toInteger(field), integer, isInteger), text.constData());
            QVERIFY2(isSame(toReal(field), real, isReal), text.constData());
        }
    }
}

QTEST_GUILESS_MAIN(NumberTexts)
#include "tst_number_texts.moc"
