#include "inflation.h"
#include "p_value.h"
#include "support/random.h"

#include <QTest>
#include <algorithm>
#include <cmath>

// The chi-square statistic of a p-value, and lambda.
class Inflation : public QObject {
    Q_OBJECT

private slots:
    void statistics_data();
    void statistics();
    void undoesNegLog10OfZ();
    void lambdas_data();
    void lambdas();
    void agreesWithSorting();
};

namespace {

bool isClose(double number, double expected) {
    return std::abs(number - expected) <= 1e-10 * std::abs(expected);
}

double plainLambda(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t count = values.size();
    const double median =
        count % 2 == 1 ? chiSquareOf(values[count / 2])
                       : (chiSquareOf(values[count / 2 - 1]) + chiSquareOf(values[count / 2])) / 2;
    return median / 0.45493642311957283;
}

} // namespace

// From a table of the distribution.
void Inflation::statistics_data() {
    QTest::addColumn<double>("p");
    QTest::addColumn<double>("expected");
    const auto row = [](double p, double expected) { QTest::addRow("%g", p) << p << expected; };
    row(1.0, 0.0);
    row(0.9, 0.015790774093431218);
    row(0.5, 0.45493642311957283);
    row(0.05, 3.8414588206941245);
    row(0.01, 6.6348966010212127);
    row(5e-8, 29.716785489763062);
}

void Inflation::statistics() {
    QFETCH(double, p);
    QFETCH(double, expected);
    const double statistic = chiSquareOf(-std::log10(p));
    QVERIFY2(isClose(statistic, expected), QByteArray::number(statistic, 'g', 17).constData());
}

// Also where no double holds p.
void Inflation::undoesNegLog10OfZ() {
    for (const double z : {0.5, 3.0, 37.0, 37.6, 38.0, 100.0, 1e4})
        QVERIFY2(isClose(chiSquareOf(negLog10OfZ(z)), z * z), QByteArray::number(z).constData());
}

void Inflation::lambdas_data() {
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<double>("expected");
    const double half = std::log10(2.0), twentieth = std::log10(20.0);
    QTest::newRow("one") << QList<double>{half} << 1.0;
    QTest::newRow("odd") << QList<double>{400.0, half, 0.0} << 1.0;
    QTest::newRow("even") << QList<double>{twentieth, half}
                          << (3.8414588206941245 / 0.45493642311957283 + 1.0) / 2;
    QTest::newRow("p of 1") << QList<double>{-0.0, 0.0, -0.0} << 0.0;
}

void Inflation::lambdas() {
    QFETCH(QList<double>, values);
    QFETCH(double, expected);
    const auto lambda = genomicInflation(values);
    QVERIFY(lambda);
    QVERIFY(isClose(*lambda, expected));
    QVERIFY(!genomicInflation({}));
}

void Inflation::agreesWithSorting() {
    Random random(runSeed());
    for (int i = 0; i < randomCases(3'000); ++i) {
        std::vector<double> values(static_cast<size_t>(
            random.oneIn(100) ? random.between(10'000, 100'000) : random.between(1, 60)));
        const bool isCoarse = random.oneIn(2);
        for (double& value : values)
            value = isCoarse ? double(random.below(4)) : -std::log10(1.0 - random.fraction());
        // A sample at even steps may then be misleading.
        if (random.oneIn(3))
            for (size_t place = 0; place < values.size(); place += values.size() / 16'384 + 1)
                values[place] += 2.0;
        const auto lambda = genomicInflation(values);
        QVERIFY(lambda);
        QVERIFY(isClose(*lambda, plainLambda(values)));
    }
}

QTEST_APPLESS_MAIN(Inflation)
#include "tst_inflation.moc"
