#include "plain_table.h"
#include "point_table.h"
#include "support/failing_device.h"
#include "support/random.h"
#include "support/reading_check.h"

#include <QBuffer>
#include <QTest>
#include <bit>
#include <cmath>
#include <limits>

// The names of saved files, and every byte of a table.
class PointTable : public QObject {
    Q_OBJECT

private slots:
    void tableNames_data();
    void tableNames();
    void rows_data();
    void rows();
    void labels_data();
    void labels();
    void readsBackIn();
    void knownNumbers();
    void randomNumbers();
    void failsWithItsDevice();
    void tableLongerThanABlock();
};

namespace {

QByteArray written(const Points& points, const QString& label) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return writePointTable(buffer, points, label) ? buffer.data() : QByteArray("failed");
}

// Line by line, to show where a long table differs from the reference.
void compareTables(const Points& points) {
    const QString label = QStringLiteral("1");
    QCOMPARE(written(points, label).split('\n'), plain::table(points, label).split('\n'));
}

} // namespace

void PointTable::tableNames_data() {
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("image");
    const auto row = [](const char* name, const char* table, const char* image) {
        QTest::newRow(name) << QString(table) << QString(image);
    };
    row("result", "result.txt", "result.png");
    row("result.txt", "result.txt", "result.png");
    row("run1.TXT", "run1.TXT.txt", "run1.png");
    row("my.data", "my.data.txt", "my.png");
    row("my.data.txt", "my.data.txt", "my.png");
    row(".hidden", ".hidden.txt", ".png");
    row("../out/run", "../out/run.txt", ".png");
    row("out.d/run", "out.d/run.txt", "out.png");
    row("/out/run", "/out/run.txt", "/out/run.png");
    row(".txt", ".txt", ".png");
    row("txt", "txt.txt", "txt.png");
    row("run.txt ", "run.txt .txt", "run.png");
    row("run.", "run..txt", "run.png");
    row("a run", "a run.txt", "a run.png");
}

void PointTable::tableNames() {
    const QString table = tableName(QTest::currentDataTag());
    QTEST(table, "table");
    QTEST(imageName(table), "image");
}

void PointTable::rows_data() {
    QTest::addColumn<Points>("points");
    QTest::addColumn<QByteArray>("lines");
    const auto row = [](const char* name, const Points& points, const QByteArray& lines) {
        QTest::newRow(name) << points << lines;
    };
    row("none", {}, "");
    row("one", {{100}, {7.3010299956639813}}, "5\t100\t5e-08\t7.30103\n");
    row("in their order", {{300, 100, 200}, {1.0, 3.0, 2.0}},
        "5\t300\t0.1\t1\n5\t100\t0.001\t3\n5\t200\t0.01\t2\n");
    row("a value of 0", {{1}, {0.0}}, "5\t1\t1\t0\n");
    row("a value below 0", {{1}, {-1.0}}, "5\t1\t10\t-1\n");
    row("positions at the int limits",
        {{std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 0, -1},
         {1.0, 1.0, 1.0, 1.0}},
        "5\t-2147483648\t0.1\t1\n5\t2147483647\t0.1\t1\n5\t0\t0.1\t1\n5\t-1\t0.1\t1\n");
    row("not a number", {{1}, {std::nan("")}}, "5\t1\tnan\tnan\n");
    row("infinite",
        {{1, 2},
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}},
        "5\t1\t0\tinf\n5\t2\tinf\t-inf\n");
    row("from fixed to scientific", {{1, 2, 3}, {4.0, 5.0, 6.5}},
        "5\t1\t0.0001\t4\n5\t2\t1e-05\t5\n5\t3\t3.16228e-07\t6.5\n");
    row("a p-value below the smallest double", {{1}, {400.0}}, "5\t1\t0\t400\n");
}

void PointTable::rows() {
    QFETCH(Points, points);
    QFETCH(QByteArray, lines);
    QCOMPARE(written(points, QStringLiteral("5")), "Chr\tPosition\tP\t-log10(P)\n" + lines);
    QCOMPARE(plain::table(points, QStringLiteral("5")), "Chr\tPosition\tP\t-log10(P)\n" + lines);
}

void PointTable::labels_data() {
    QTest::addColumn<QString>("label");
    for (const char* label : {"1", "", "chr X", "\"5\"", "5\t6", "染色體", "é🧬"})
        QTest::newRow(qPrintable(QString::fromUtf8(label).toHtmlEscaped() + u'.'))
            << QString::fromUtf8(label);
    QTest::newRow("a lone surrogate") << QString(QChar(0xd800));
    QTest::newRow("the other lone surrogate") << QString(QChar(0xdc00));
    QTest::newRow("a byte-order mark") << QString(QChar(0xfeff));
    QTest::newRow("a zero") << QString(QChar(0));
}

void PointTable::labels() {
    QFETCH(QString, label);
    const Points points{{1, 2}, {1.0, 2.0}};
    QCOMPARE(written(points, label), plain::table(points, label));
    QVERIFY(written(points, label).contains("\t2\t0.01\t2\n"));
}

void PointTable::readsBackIn() {
    const Points points{{12345, 23456}, {3.0, 2.0}};
    checkReading(written(points, QStringLiteral("7")), QStringLiteral("7"),
                 QStringLiteral("7: 1 112 = 3 2"), QStringLiteral("12345 23456 = 3 2"));
}

// Numbers halfway between two texts of six digits, numbers that gain a digit when rounded, and
// numbers at the limits of double.
void PointTable::knownNumbers() {
    QList<double> values{0.0,
                         -0.0,
                         5e-324,
                         -5e-324,
                         1e-300,
                         1e300,
                         2.2250738585072014e-308,
                         1.7976931348623157e308,
                         999999.5,
                         99999.95,
                         9999995.0,
                         0.00009999995,
                         0.0001,
                         0.00001,
                         123456.5,
                         123457.5,
                         12345.25,
                         1.000005,
                         0.5,
                         1.0000005,
                         100000.0,
                         1000000.0,
                         999999.0,
                         1e15,
                         1e16,
                         1e22,
                         1e23,
                         4.5e15 + 0.5};
    // Exactly halfway: six digits and a half, at every power of ten and of two.
    for (int digits = 1'000'005; digits < 10'000'000; digits += 99'990)
        for (int exponent = -12; exponent <= 12; ++exponent)
            values << digits * std::pow(10.0, exponent) << -digits * std::pow(10.0, exponent);
    for (int odd = 1; odd < 20'000; odd += 2)
        for (int exponent = 0; exponent <= 14; ++exponent)
            values << std::ldexp(odd, -exponent);
    for (int exponent = -320; exponent <= 308; ++exponent)
        values << std::pow(10.0, exponent) << std::nextafter(std::pow(10.0, exponent), 0.0)
               << std::nextafter(std::pow(10.0, exponent), 1e300);
    compareTables({QList<int>(values.size(), 7), values});
}

void PointTable::randomNumbers() {
    Random random(runSeed());
    QList<double> values;
    for (int i = 0; i < randomCases(200'000); ++i) {
        values << std::bit_cast<double>(random.bits()) << -std::log10(random.fraction())
               << random.fraction() * random.oneOf({1e-3, 1.0, 10.0, 1e5, 1e7})
               << random.below(20'000'000) / random.oneOf({2.0, 8.0, 20.0, 1024.0, 20'000.0, 1e7})
               << random.between(-2000, 2000) / 8.0;
    }
    compareTables({QList<int>(values.size(), 7), values});
}

// A failure is reported wherever the device fails.
void PointTable::failsWithItsDevice() {
    const Points points{{1, 2, 3}, {1.0, 2.0, 3.0}};
    const qint64 size = written(points, QStringLiteral("1")).size();
    for (qint64 goodBytes = 0; goodBytes <= size; ++goodBytes) {
        FailingDevice device({}, goodBytes);
        QVERIFY(device.open(QIODevice::WriteOnly));
        QCOMPARE(writePointTable(device, points, QStringLiteral("1")), goodBytes == size);
    }
}

void PointTable::tableLongerThanABlock() {
    Points points;
    for (int i = 0; i < 100'000; ++i) {
        points.positions << i * 37;
        points.values << i * 0.001;
    }
    compareTables(points);
    const qint64 size = written(points, QStringLiteral("1")).size();
    for (const qint64 goodBytes : {size / 2, size - 1}) {
        FailingDevice device({}, goodBytes);
        QVERIFY(device.open(QIODevice::WriteOnly));
        QVERIFY(!writePointTable(device, points, QStringLiteral("1")));
    }
}

QTEST_GUILESS_MAIN(PointTable)
#include "tst_point_table.moc"
