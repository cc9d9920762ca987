#include "plain_texts.h"
#include "plot_texts.h"

#include <QTest>
#include <limits>

class PlotTexts : public QObject {
    Q_OBJECT

private slots:
    void highlight_data();
    void highlight();
    void highlightContains();
    void grouping_data();
    void grouping();
    void span_data();
    void span();
    void value_data();
    void value();
};

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

} // namespace

void PlotTexts::highlight_data() {
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("low");
    QTest::addColumn<int>("high");
    const auto row = [](const char* name, const char* first, const char* second, int low,
                        int high) {
        QTest::newRow(name) << QString(first) << QString(second) << low << high;
    };
    row("both empty", "", "", 0, 0);
    row("both in the first", "1000-2000", "", 1000, 2000);
    row("both in the first, the second ignored", "1000-2000", "3000", 1000, 2000);
    row("both in the first, the second no number", "1000-2000", "x", 1000, 2000);
    row("one in each", "1000", "2000", 1000, 2000);
    row("one in each, a minus in the second", "1000", "-2000", 1000, -2000);
    row("a range in the second alone", "1000", "1000-2000", 0, 0);
    row("a minus at the beginning", "-5", "10", 0, 0);
    row("a minus at the end", "5-", "10", 0, 0);
    row("a minus alone", "-", "10", 0, 0);
    row("two minuses", "1-2-3", "10", 0, 0);
    row("a range from below zero", "-5-10", "10", 0, 0);
    row("the first empty", "", "2000", 0, 0);
    row("the second empty", "1000", "", 0, 0);
    row("the second no number", "1000", "x", 0, 0);
    row("the first no number", "x", "2000", 0, 0);
    row("the first part no number", "x-2000", "", 0, 0);
    row("the second part no number", "1000-x", "", 0, 0);
    row("from high to low", "2000-1000", "", 2000, 1000);
    row("spaces around", " 1000 - 2000 ", "", 1000, 2000);
    row("a plus", "+1000", "+2000", 1000, 2000);
    row("no fractions", "1000.0", "2000", 0, 0);
    row("no exponents", "1e3", "2000", 0, 0);
    row("no grouping", "1,000", "2,000", 0, 0);
    row("no hexadecimal numbers", "0x10", "32", 0, 0);
    row("the int limits", "-2147483648", "2147483647", 0, 0);
    row("the highest int", "0", "2147483647", 0, highest);
    row("beyond the highest int", "0", "2147483648", 0, 0);
}

void PlotTexts::highlight() {
    QFETCH(QString, first);
    QFETCH(QString, second);
    for (const PositionRange range :
         {highlightRange(first, second), plain::highlightRange(first, second)}) {
        QTEST(range.low, "low");
        QTEST(range.high, "high");
    }
}

void PlotTexts::highlightContains() {
    const PositionRange range{1000, 2000};
    QVERIFY(!range.contains(999));
    QVERIFY(range.contains(1000));
    QVERIFY(range.contains(2000));
    QVERIFY(!range.contains(2001));
    QVERIFY(PositionRange().contains(0));
    QVERIFY(!PositionRange().contains(1));
    QVERIFY(!PositionRange().contains(-1));
    const PositionRange backwards{2000, 1000};
    for (const int position : {999, 1000, 1500, 2000, 2001})
        QVERIFY(!backwards.contains(position));
}

void PlotTexts::grouping_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    const auto row = [](int number, const char* text) {
        QTest::newRow(text) << number << QString(text);
    };
    row(0, "0");
    row(7, "7");
    row(12, "12");
    row(123, "123");
    row(1000, "1,000");
    row(12345, "12,345");
    row(999999, "999,999");
    row(1234567, "1,234,567");
    row(123456789, "123,456,789");
    row(highest, "2,147,483,647");
    row(-1, "-1");
    row(-12, "-12");
    row(-123, "-,123");
    row(-1234, "-1,234");
    row(-123456, "-,123,456");
    row(lowest, "-2,147,483,648");
}

void PlotTexts::grouping() {
    QFETCH(int, number);
    QTEST(groupedInThrees(number), "text");
    QTEST(plain::groupedInThrees(number), "text");
}

void PlotTexts::span_data() {
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<QString>("text");
    QTest::newRow("a span") << 1000 << 151000 << "|<-- 150,000 -->|";
    QTest::newRow("none") << 5 << 5 << "|<-- 0 -->|";
    QTest::newRow("backwards") << 500 << 300 << "|<-- -,200 -->|";
    QTest::newRow("beyond int") << lowest << highest << "|<-- -1 -->|";
}

void PlotTexts::span() {
    QFETCH(int, first);
    QFETCH(int, last);
    QTEST(spanText(first, last), "text");
}

void PlotTexts::value_data() {
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");
    const auto row = [](double number, const char* text) {
        QTest::newRow(text) << number << QString(text);
    };
    row(12.3456789, "12.3457");
    row(4.0, "4");
    row(7.3010299956639813, "7.30103");
    row(0.5, "0.5");
    row(0.0, "0");
    row(236.568636235841, "236.569");
    row(999999.4, "999999");
    row(1234567.0, "1.23457e+06");
    row(0.0001, "0.0001");
    row(0.00001, "1e-05");
    row(-0.3010299956639812, "-0.30103");
    row(-9999999.9, "-1e+07");
    row(std::numeric_limits<double>::infinity(), "inf");
}

void PlotTexts::value() {
    QFETCH(double, number);
    QTEST(valueText(number), "text");
}

QTEST_GUILESS_MAIN(PlotTexts)
#include "tst_plot_texts.moc"
