#include "support/reading.h"

#include <QTest>

// The scan turns the kept points into a chromosome index and genome coordinates.
class GenomeScanTest : public QObject {
    Q_OBJECT

private slots:
    void index_data();
    void index();
    void tooFewPoints_data();
    void tooFewPoints();
    void coordinatesWrapAround();
    void manyChromosomes();
};

namespace {

// Puts a header before lines of label, position and p-value.
QByteArray fileOf(const QByteArray& lines) {
    return "chr pos p\n" + lines;
}

void row(const char* name, const QByteArray& lines, const QStringList& tags,
         const QList<int>& coordinates, const QVector<int>& startIndex,
         const QVector<int>& endIndex, const QVector<int>& startValue,
         const QVector<int>& endValue) {
    QTest::newRow(name) << lines << tags << coordinates << startIndex << endIndex << startValue
                        << endValue;
}

template <typename Value>
QList<Value> valuesOf(const QList<Chromosome>& chromosomes, Value Chromosome::*value) {
    QList<Value> values;
    for (const Chromosome& chromosome : chromosomes)
        values << chromosome.*value;
    return values;
}

} // namespace

void GenomeScanTest::index_data() {
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QStringList>("tags");
    QTest::addColumn<QList<int>>("coordinates");
    QTest::addColumn<QVector<int>>("startIndex");
    QTest::addColumn<QVector<int>>("endIndex");
    QTest::addColumn<QVector<int>>("startValue");
    QTest::addColumn<QVector<int>>("endValue");
    row("three chromosomes",
        "A 1000 .1\nA 2000 .1\nA 3000 .1\nB 500 .1\nB 1500 .1\nB 2500 .1\nC 10000 .1\nC 20000 .1\n",
        {"A", "B", "C"}, {1, 11, 21, 22, 32, 42, 43, 143}, {0, 4, 7}, {3, 6, 7}, {1, 32, 143},
        {22, 43, 143});
    row("one chromosome", "A 1000 .1\nA 2000 .1\nA 3000 .1\n", {"A"}, {1, 11, 21}, {0}, {2}, {1},
        {21});
    row("a label that returns", "A 100 .1\nA 200 .1\nB 300 .1\nB 400 .1\nA 500 .1\nA 600 .1\n",
        {"A", "B", "A"}, {1, 2, 3, 4, 5, 6}, {0, 3, 5}, {2, 4, 5}, {1, 4, 6}, {3, 5, 6});
    row("two positions in one unit", "A 150 .1\nA 199 .1\nA 200 .1\n", {"A"}, {1, 1, 2}, {0}, {2},
        {1}, {2});
    row("the first position is the origin, however large", "A 248000000 .1\nA 248000100 .1\n",
        {"A"}, {1, 2}, {0}, {1}, {1}, {2});
    row("positions below a unit", "A 0 .1\nA 99 .1\nA -99 .1\nA 100 .1\nA -100 .1\n", {"A"},
        {1, 1, 1, 2, 0}, {0}, {4}, {1}, {0});
    row("two points, two chromosomes", "A 100 .1\nB 300 .1\n", {"A", "B"}, {1, 2}, {0, 2}, {1, 1},
        {1, 2}, {2, 2});
    row("a last chromosome of one point", "A 100 .1\nA 300 .1\nB 700 .1\n", {"A", "B"}, {1, 3, 4},
        {0, 3}, {2, 2}, {1, 4}, {4, 4});
    row("chromosomes of one point in the middle",
        "A 100 .1\nA 300 .1\nB 700 .1\nC 100 .1\nD 100 .1\nD 500 .1\n", {"A", "B", "C", "D"},
        {1, 3, 4, 5, 6, 10}, {0, 3, 4, 5}, {2, 3, 4, 5}, {1, 5, 6, 10}, {4, 5, 6, 10});
    row("a first chromosome of one point", "A 100 .1\nB 300 .1\nB 500 .1\n", {"A", "B"}, {1, 2, 4},
        {0, 2}, {1, 2}, {1, 4}, {2, 4});
    row("positions in no order", "A 5000 .1\nA 1000 .1\nA 9000 .1\nB 500 .1\nB 100 .1\n",
        {"A", "B"}, {1, -39, 41, 42, 38}, {0, 4}, {3, 4}, {1, 38}, {42, 38});
    row("skipped lines of another label split nothing",
        "A 100 .1\nB 200 NA\nA 300 .1\nB 400 0\nA 500 .1\n", {"A"}, {1, 3, 5}, {0}, {2}, {1}, {5});
    row("a chromosome of skipped lines alone has no entry",
        "A 100 .1\nA 200 .1\nB 200 NA\nB 300 0\nC 400 .1\nC 500 .1\n", {"A", "C"}, {1, 2, 3, 4},
        {0, 3}, {2, 3}, {1, 4}, {3, 4});
    row("skipped lines before the first point do not set the origin",
        "A 100 NA\nA 900 .1\nA 1000 .1\n", {"A"}, {1, 2}, {0}, {1}, {1}, {2});
    row("empty labels", " 100 .1\n 200 .1\nA 300 .1\nA 400 .1\n", {"", "A"}, {1, 2, 3, 4}, {0, 3},
        {2, 3}, {1, 4}, {3, 4});
    row("a label that contains another", "1 100 .1\n11 200 .1\n1 300 .1\n1 400 .1\n",
        {"1", "11", "1"}, {1, 2, 3, 4}, {0, 2, 3}, {1, 2, 3}, {1, 3, 4}, {2, 3, 4});
    row("the lowest positions", "A -2147483648 .1\nA -2147483648 .1\nA -2147483549 .1\n", {"A"},
        {1, 1, 2}, {0}, {2}, {1}, {2});
}

void GenomeScanTest::index() {
    QFETCH(QByteArray, lines);
    const Result<GenomeScan> result = scan(fileOf(lines));
    QVERIFY2(std::holds_alternative<GenomeScan>(result), qPrintable(told(result)));
    QVERIFY(isSame(result, plainScan(fileOf(lines))));
    const auto& [chromosomes, points] = std::get<GenomeScan>(result);
    QTEST(QStringList(valuesOf(chromosomes, &Chromosome::label)), "tags");
    QTEST(points.positions, "coordinates");
    QTEST(valuesOf(chromosomes, &Chromosome::startIndex), "startIndex");
    QTEST(valuesOf(chromosomes, &Chromosome::endIndex), "endIndex");
    QTEST(valuesOf(chromosomes, &Chromosome::startValue), "startValue");
    QTEST(valuesOf(chromosomes, &Chromosome::endValue), "endValue");
    QCOMPARE(points.values, QList<double>(points.positions.size(), 1.0));
}

void GenomeScanTest::tooFewPoints_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("header alone") << fileOf("");
    QTest::newRow("one point") << fileOf("A 100 .1\n");
    QTest::newRow("one kept point") << fileOf("A 100 NA\nA 200 .1\nA 300 0\n");
    QTest::newRow("no kept point") << fileOf("A 100 NA\nA 200 0\n");
    QTest::newRow("one point without a header") << QByteArray("1 100 .1\n");
}

void GenomeScanTest::tooFewPoints() {
    QFETCH(QByteArray, file);
    const QString fault = QStringLiteral("few genome points");
    QCOMPARE(told(scan(file)), fault);
    QCOMPARE(told(plainScan(file)), fault);
}

// Each chromosome A extends the axis by nearly 43 million units, until coordinates exceed an int.
void GenomeScanTest::coordinatesWrapAround() {
    const QByteArray lines = QByteArray("A -2147483648 .1\nA 2147483647 .1\nB 0 .1\n").repeated(51);
    const Result<GenomeScan> result = scan(fileOf(lines));
    QVERIFY(isSame(result, plainScan(fileOf(lines))));
    const QList<int>& positions = std::get<GenomeScan>(result).points.positions;
    QCOMPARE(positions.mid(0, 3), QList<int>({1, 42949673, 42949674}));
    // 50 * 42949674 - 2^32, and one more.
    QCOMPARE(positions[149], 2147483700 - 4294967296);
    QCOMPARE(positions[150], 2147483701 - 4294967296);
}

// A new label on every line, far more than any genome has.
void GenomeScanTest::manyChromosomes() {
    constexpr int count = 20000;
    QByteArray lines;
    for (int i = 0; i < count; ++i)
        lines += "rs" + QByteArray::number(i) + ' ' + QByteArray::number(i * 1000) + " .1\n";
    const Result<GenomeScan> result = scan(fileOf(lines));
    QVERIFY(isSame(result, plainScan(fileOf(lines))));
    const auto& [chromosomes, points] = std::get<GenomeScan>(result);
    QCOMPARE(chromosomes.size(), count);
    QCOMPARE(chromosomes.constLast().label, QStringLiteral("rs19999"));
    QCOMPARE(points.positions.constLast(), count);
}

QTEST_GUILESS_MAIN(GenomeScanTest)
#include "tst_genome_scan.moc"
