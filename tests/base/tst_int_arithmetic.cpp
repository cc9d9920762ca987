#include "int_arithmetic.h"

#include <QTest>
#include <cmath>

class IntArithmetic : public QObject {
    Q_OBJECT

private slots:
    void truncates_data();
    void truncates();
    void wraps_data();
    void wraps();
};

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

void IntArithmetic::truncates_data() {
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("expected");
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("minus zero") << -0.0 << 0;
    QTest::newRow("below one") << 0.95 << 0;
    QTest::newRow("above minus one") << -0.95 << 0;
    QTest::newRow("one") << 1.0 << 1;
    QTest::newRow("toward zero from above") << 2.999999 << 2;
    QTest::newRow("toward zero from below") << -2.999999 << -2;
    QTest::newRow("highest") << 2147483647.0 << highest;
    QTest::newRow("highest and a bit") << 2147483647.9999 << highest;
    QTest::newRow("one too many") << 2147483648.0 << lowest;
    QTest::newRow("lowest") << -2147483648.0 << lowest;
    QTest::newRow("lowest and a bit") << -2147483648.9999 << lowest;
    QTest::newRow("nearly lowest") << -2147483647.5 << lowest + 1;
    QTest::newRow("one too few") << -2147483649.0 << lowest;
    QTest::newRow("huge") << 1e300 << lowest;
    QTest::newRow("huge below zero") << -1e300 << lowest;
    QTest::newRow("infinite") << infinity << lowest;
    QTest::newRow("infinite below zero") << -infinity << lowest;
    QTest::newRow("not a number") << std::nan("") << lowest;
    QTest::newRow("tiny") << 5e-324 << 0;
}

void IntArithmetic::truncates() {
    QFETCH(double, number);
    QTEST(truncated(number), "expected");
}

void IntArithmetic::wraps_data() {
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<int>("sum");
    QTest::addColumn<int>("difference");
    QTest::newRow("small") << 5 << 3 << 8 << 2;
    QTest::newRow("below zero") << -5 << 3 << -2 << -8;
    QTest::newRow("over the highest") << highest << 1 << lowest << highest - 1;
    QTest::newRow("under the lowest") << lowest << 1 << lowest + 1 << highest;
    QTest::newRow("lowest twice") << lowest << lowest << 0 << 0;
    QTest::newRow("highest twice") << highest << highest << -2 << 0;
    QTest::newRow("from end to end") << highest << lowest << -1 << -1;
    QTest::newRow("zero less the lowest") << 0 << lowest << lowest << lowest;
}

void IntArithmetic::wraps() {
    QFETCH(int, a);
    QFETCH(int, b);
    QTEST(wrappedSum(a, b), "sum");
    QTEST(wrappedDifference(a, b), "difference");
}

QTEST_GUILESS_MAIN(IntArithmetic)
#include "tst_int_arithmetic.moc"
