#include "number_fields.h"
#include "p_value.h"
#include "support/random.h"

#include <QTest>
#include <cmath>
#include <limits>
#include <utility>

// Which texts are p-values, how large they are, and how p-values are written.
class PValues : public QObject {
    Q_OBJECT

private slots:
    void missingTexts();
    void texts_data();
    void texts();
    void noNumbers_data();
    void noNumbers();
    void decimalCommas_data();
    void decimalCommas();
    void numbers_data();
    void numbers();
    void writtenLogarithms_data();
    void writtenLogarithms();
    void writtenPs_data();
    void writtenPs();
    void normalScores_data();
    void normalScores();
    void normalScoresJoin();
    void randomTexts();
    void randomLogarithms();
};

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

bool isClose(double a, double b, double relative) {
    return a == b || std::abs(a - b) <= relative * std::max(std::abs(a), std::abs(b));
}

std::string_view view(const QByteArray& text) {
    return {text.constData(), static_cast<size_t>(text.size())};
}

QTestData& row(const char* text) {
    return QTest::newRow(*text ? text : "empty") << QByteArray(text);
}

template <typename... Texts>
void rows(Texts... texts) {
    QTest::addColumn<QByteArray>("text");
    (row(texts), ...);
}

QByteArray writtenP(double negLog10) {
    QByteArray text;
    appendPOfNegLog10(negLog10, text);
    return text;
}

double toDouble(const QByteArray& text) {
    bool isNumber = false;
    const double number = QString::fromLatin1(text).toDouble(&isNumber);
    return isNumber ? number : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

void PValues::missingTexts() {
    for (const char* text : {"", "NA", "N/A", "n/a", "na", "nan", "NaN", "-nan", "null", "NULL",
                             "None", "NONE", ".", "-", "#NA", "NR", " ", " NA ", "\t."}) {
        QVERIFY2(isMissing(text), text);
        QVERIFY2(readPValue(text, false).kind == PValue::Kind::Missing, text);
    }
    for (const char* text : {"inf", "0", "-9", "N", "NAN.", "NA NA", "#", "..", "--", "nanana"})
        QVERIFY2(!isMissing(text), text);
}

void PValues::texts_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("p");
    QTest::addColumn<double>("negLog10");
    QTest::addColumn<bool>("isReadByWindow");
    row("0.05") << 0.05 << 1.3010299956639812 << true;
    row("1") << 1.0 << 0.0 << true;
    row("1.0000005") << 1.0000005 << -2.1714718669518614e-07 << true;
    row("5e-8") << 5e-8 << 7.3010299956639813 << true;
    row("5E-08") << 5e-8 << 7.3010299956639813 << true;
    row("+5e-08") << 5e-8 << 7.3010299956639813 << true;
    row(" 5e-08 ") << 5e-8 << 7.3010299956639813 << true;
    row(".5") << 0.5 << 0.3010299956639812 << true;
    row("1e+2") << 100.0 << -2.0 << true;
    row("0") << 0.0 << infinity << true;
    row("0.0000") << 0.0 << infinity << true;
    row("0e-400") << 0.0 << infinity << true;
    row("2.2250738585072014e-308") << 2.2250738585072014e-308 << 307.6526555685888 << true;
    // The double nearest to 3e-324 is the smallest one, which is 65 % larger.
    row("3e-324") << smallest << 323.5228787452803 << true;
    row("1.5e-323") << 3 * smallest << 322.8239087409443 << true;
    row("4.94065645841247e-324") << smallest << 323.3062153431158 << true;
    row("2e-324") << 0.0 << 323.6989700043360 << false;
    row("1e-400") << 0.0 << 400.0 << false;
    row("4e-400") << 0.0 << 399.3979400086720 << false;
    row("-4e-400") << 0.0 << 399.3979400086720 << false;
    row("1e-99999") << 0.0 << 99999.0 << false;
    row("0.0001e-9999") << 0.0 << 10003.0 << false;
    row("1000e-9999") << 0.0 << 9996.0 << false;
    row("1e-99999999999999999999") << 0.0 << 1e15 << false;
    row("<2e-16") << 2e-16 << 15.698970004336019 << false;
    row("< 2e-16") << 2e-16 << 15.698970004336019 << false;
    row("<=2e-16") << 2e-16 << 15.698970004336019 << false;
    row("<4.9E-324") << smallest << 323.3098039199715 << false;
    row("<1e-400") << 0.0 << 400.0 << false;
    row("1e400") << infinity << -400.0 << false;
}

void PValues::texts() {
    QFETCH(const QByteArray, text);
    QFETCH(const double, p);
    QFETCH(const double, negLog10);
    QFETCH(const bool, isReadByWindow);
    const PValue value = readPValue(view(text), false);
    QVERIFY(value.kind == PValue::Kind::Number);
    QCOMPARE(value.p, p);
    QVERIFY2(isClose(value.negLog10, negLog10, 1e-14),
             qPrintable(QString::number(value.negLog10, 'g', 17)));
    QCOMPARE(value.isReadByWindow, isReadByWindow);
    QCOMPARE(value.isReadByWindow, toDouble(text) == p);
    QCOMPARE(value.isBound, text.startsWith('<'));
    QCOMPARE(value.isNegative, text.startsWith('-'));
}

void PValues::noNumbers_data() {
    rows("inf", "-inf", "Infinity", "0x10", "0x1p-5", "e-5", "1e", "1e+", "1e-", ".e5", "+", "1 2",
         "1,5", "1.2.3", "--1", "+-1", "1e5.5", "1e--5", "<", "<<1", "<NA", "p", "5%", "1e-5x",
         "1e-400x", "1e-400 5", "<nan", "0,05", "1d-5");
}

void PValues::noNumbers() {
    QFETCH(const QByteArray, text);
    const PValue value = readPValue(view(text), false);
    QVERIFY(value.kind == PValue::Kind::NotANumber);
    QVERIFY(!value.isReadByWindow && !value.isBound);
    double number = 0.0;
    QVERIFY(!readNumber(view(text), false, number));
}

void PValues::decimalCommas_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("p");
    QTest::addColumn<bool>("isReadByWindow");
    row("3,2E-08") << 3.2e-8 << false;
    row("0,05") << 0.05 << false;
    row("<0,05") << 0.05 << false;
    row("1") << 1.0 << true;
    row("0.05") << 0.05 << true;
}

void PValues::decimalCommas() {
    QFETCH(const QByteArray, text);
    QFETCH(const double, p);
    QFETCH(const bool, isReadByWindow);
    const PValue value = readPValue(view(text), true);
    QVERIFY(value.kind == PValue::Kind::Number);
    QCOMPARE(value.p, p);
    QCOMPARE(value.negLog10, 0.0 - std::log10(p));
    QCOMPARE(value.isReadByWindow, isReadByWindow);
    for (const char* bad : {"1.234,5", "1,234,5", ","})
        QVERIFY2(readPValue(bad, true).kind == PValue::Kind::NotANumber, bad);
}

void PValues::numbers_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("number");
    row("0.25") << 0.25;
    row("-3.5") << -3.5;
    row("-0") << 0.0;
    row("1e-400") << 0.0;
    row("-1,5") << -1.5;
}

void PValues::numbers() {
    QFETCH(const QByteArray, text);
    QFETCH(const double, number);
    double read = 1.0;
    QVERIFY(readNumber(view(text), true, read));
    QCOMPARE(read, number);
    for (const char* bad : {"", "NA", "nan", "1e400", "-1e400", "<5"})
        QVERIFY2(!readNumber(bad, true, read), bad);
}

void PValues::writtenLogarithms_data() {
    QTest::addColumn<double>("negLog10");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("zero") << 0.0 << QByteArray("0");
    QTest::newRow("negative zero") << -0.0 << QByteArray("0");
    QTest::newRow("usual") << 7.3010299956639813 << QByteArray("7.30103");
    QTest::newRow("no double") << 399.3979400086720 << QByteArray("399.398");
    QTest::newRow("large") << 99999.0 << QByteArray("99999");
    QTest::newRow("larger") << 1234567.0 << QByteArray("1.23457e+06");
    QTest::newRow("small") << 0.000043429 << QByteArray("4.3429e-05");
}

void PValues::writtenLogarithms() {
    QFETCH(const double, negLog10);
    QFETCH(const QByteArray, text);
    QByteArray written = "before";
    appendNegLog10(negLog10, written);
    QCOMPARE(written, "before" + text);
}

void PValues::writtenPs_data() {
    QTest::addColumn<double>("negLog10");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("one") << 0.0 << QByteArray("1");
    QTest::newRow("power") << 8.0 << QByteArray("1e-08");
    QTest::newRow("usual") << 1.5 << QByteArray("0.031622776601683791");
    QTest::newRow("below the normal doubles") << 320.0 << QByteArray("1e-320");
    QTest::newRow("smallest") << 323.3062153431158 << QByteArray("4.94065645841247e-324");
    QTest::newRow("just below") << 323.31 << QByteArray("4.94065645841247e-324");
    QTest::newRow("far below") << 5000.0 << QByteArray("4.94065645841247e-324");
    QTest::newRow("nothing") << infinity << QByteArray("4.94065645841247e-324");
}

void PValues::writtenPs() {
    QFETCH(const double, negLog10);
    QFETCH(const QByteArray, text);
    QCOMPARE(writtenP(negLog10), text);
}

void PValues::normalScores_data() {
    QTest::addColumn<double>("z");
    QTest::addColumn<double>("negLog10");
    for (const auto& [z, negLog10] : {std::pair(0.0, 0.0),
                                      {1e-300, 3.4651686195248404e-301},
                                      {1e-9, 3.4651686209072427e-10},
                                      {0.5, 0.20966199360125958},
                                      {1.0, 0.4985155458279893},
                                      {1.959963984540054, 1.301029995663981},
                                      {5.0, 6.2416156767266733},
                                      {9.999, 22.812638078748914},
                                      {10.0, 22.817023409822095},
                                      {10.001, 22.821409171087682},
                                      {37.0, 298.94115118294594},
                                      {40.0, 349.13597646368186},
                                      {100.0, 2173.5705128733704},
                                      {1e6, 217147240957.72397}})
        QTest::addRow("%.16g", z) << z << negLog10;
}

void PValues::normalScores() {
    QFETCH(const double, z);
    QFETCH(const double, negLog10);
    QVERIFY2(isClose(negLog10OfZ(z), negLog10, 2e-15),
             qPrintable(QString::number(negLog10OfZ(z), 'g', 17)));
    QCOMPARE(negLog10OfZ(-z), negLog10OfZ(z));
}

// Where one formula takes over from another, the values and their slopes agree.
void PValues::normalScoresJoin() {
    for (const double z : {1.0, 10.0}) {
        const double step = 1e-6, before = negLog10OfZ(z - 1e-15 * z), at = negLog10OfZ(z);
        QVERIFY(isClose(before, at, 1e-14));
        const double left = at - negLog10OfZ(z - step), right = negLog10OfZ(z + step) - at;
        QVERIFY(isClose(left, right, 1e-5));
    }
    QCOMPARE(negLog10OfZ(infinity), infinity);
    QVERIFY(std::isnan(negLog10OfZ(std::numeric_limits<double>::quiet_NaN())));
}

namespace {

// A p-value in some notation, and -log10 of it.
std::pair<QByteArray, long double> randomText(Random& random) {
    QByteArray digits = QByteArray::number(random.between(1, 9));
    for (int i = random.below(20); i > 0; --i)
        digits += static_cast<char>('0' + random.below(10));
    const int exponent = -random.below(random.oneOf({10, 330, 4000}));
    const int point = random.between(0, static_cast<int>(digits.size()));
    const long double log10 = std::log10(std::strtold(digits.constData(), nullptr)) + exponent -
                              static_cast<long double>(digits.size() - point);
    digits.insert(point, '.');
    return {digits + (random.oneIn(2) ? 'e' : 'E') + QByteArray::number(exponent), -log10};
}

} // namespace

void PValues::randomTexts() {
    Random random(runSeed());
    for (int i = randomCases(200'000); i > 0; --i) {
        const auto [text, negLog10] = randomText(random);
        const PValue value = readPValue(view(text), false);
        QVERIFY2(value.kind == PValue::Kind::Number, text);
        const double difference = std::abs(value.negLog10 - static_cast<double>(negLog10));
        QVERIFY2(difference <= 1e-15 + 1e-15 * std::abs(static_cast<double>(negLog10)), text);
        const double byQt = toDouble(text);
        QVERIFY2(value.isReadByWindow == (byQt > 0.0), text);
        QVERIFY2(value.p == (byQt > 0.0 ? byQt : 0.0), text);
    }
}

void PValues::randomLogarithms() {
    Random random(runSeed());
    for (int i = randomCases(200'000); i > 0; --i) {
        const double negLog10 = random.fraction() * random.oneOf({10, 330});
        const QByteArray text = writtenP(negLog10);
        const double p = toDouble(text);
        QVERIFY2(p > 0.0 && text.size() < 24, text);
        if (negLog10 < 307.6)
            QVERIFY2(std::abs(-std::log10(p) - negLog10) < 1e-12, text);
        // The text has more digits than a double below that.
        else if (negLog10 < 323.306)
            QVERIFY2(std::abs(readPValue(view(text), false).negLog10 - negLog10) < 1e-12, text);
        else
            QCOMPARE(p, smallest);
    }
}

QTEST_GUILESS_MAIN(PValues)
#include "tst_p_value.moc"
