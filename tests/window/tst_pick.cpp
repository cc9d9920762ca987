#include "driven_run.h"
#include "samples.h"

#include <QTest>
#include <cmath>

// Picking a chromosome with a box in the genome view. On the genome sample one genome coordinate is
// 640 / 156 pixels wide, and the axis begins at -6.
class TestPick : public QObject {
    Q_OBJECT

private slots:
    void middleDecides_data();
    void middleDecides();
    void middleColumn_data();
    void middleColumn();
    void pickAfterPick();
    void pickAfterZoomAndGlobal();
    void labelThatReturns();
    void loggedScale_data();
    void loggedScale();
    void blockEndsAtSkippedLine();
};

static int firstColumnOf(int coordinate) {
    return static_cast<int>(std::ceil((coordinate + 6) * 640.0 / 156));
}

static QString boxAround(int column) {
    return QStringLiteral("box %1 50 %2 90").arg(column - 1).arg(column + 1);
}

void TestPick::middleDecides_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("span");  // as logged
    const QString a = "start 1 end 22"; // also picked where there is no chromosome
    const QString b = "start 32 end 43", c = "start 143 end 143";
    QTest::newRow("first position of A") << firstColumnOf(1) << 1 << 0 << a;
    QTest::newRow("inside A") << firstColumnOf(12) << 12 << 0 << a;
    QTest::newRow("last position of A") << firstColumnOf(22) << 22 << 0 << a;
    QTest::newRow("last column of A") << firstColumnOf(23) - 1 << 22 << 0 << a;
    QTest::newRow("between A and B") << firstColumnOf(23) << 23 << 0 << a;
    QTest::newRow("just left of B") << firstColumnOf(31) << 31 << 0 << a;
    QTest::newRow("first position of B") << firstColumnOf(32) << 32 << 1 << b;
    QTest::newRow("last position of B") << firstColumnOf(43) << 43 << 1 << b;
    QTest::newRow("between B and C") << firstColumnOf(44) << 44 << 0 << a;
    QTest::newRow("C's only position") << firstColumnOf(143) << 143 << 2 << c;
    QTest::newRow("right of C") << firstColumnOf(144) << 144 << 0 << a;
    QTest::newRow("left of A") << 4 << -6 << 0 << a;
}

void TestPick::middleDecides() {
    QFETCH(int, column);
    QFETCH(int, position);
    QFETCH(int, index);
    QFETCH(QString, span);
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {boxAround(column), "dump a"}));
    const QStringList tags{"A", "B", "C"};
    const QList<int> positions[] = {{1000, 2000, 3000}, {500, 1500, 2500}, {10000, 20000}};
    const State state = run.state("a");
    QCOMPARE(state.integer("selected_chromosome"), index);
    QCOMPARE(state.integers("Pos_list"), positions[index]);
    QCOMPARE(state.integers("Pos_list2"), positions[index]);
    QCOMPARE(state.integer("globaldisplay"), 0);
    QVERIFY(!state.isVisible("rubberBand"));
    QCOMPARE(state.integer("GLOBAL_minX"), -6);
    const QString line = QStringLiteral("Get GLOBAL\nselect chrom %1 %2 point %3 position %4 %5 "
                                        "pixPerX 4.10256 minX -6\n\n"
                                        "selected chromosome by getManhattan %1\n");
    QCOMPARE(QString::fromUtf8(run.log()),
             logHeader + line.arg(tags[index]).arg(index).arg(column).arg(position).arg(span));
}

void TestPick::middleColumn_data() {
    QTest::addColumn<QString>("box");
    QTest::addColumn<QByteArray>("logged");
    const QByteArray overB = "select chrom B 1 point 202 position 43 ";
    QTest::newRow("at the top") << "box 195 0 209 1" << overB;
    QTest::newRow("at the bottom") << "box 195 590 209 599" << overB;
    QTest::newRow("over several chromosomes") << "box 0 0 404 600" << overB;
    QTest::newRow("from bottom right to top left") << "box 404 600 0 0" << overB;
    QTest::newRow("odd sum, rounded down")
        << "box 10 5 13 9" << QByteArray("select chrom A 0 point 11 position -4 ");
}

void TestPick::middleColumn() {
    QFETCH(QString, box);
    QFETCH(QByteArray, logged);
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {box}));
    QVERIFY2(run.log().contains(logged), run.log());
}

// Each pick uses the genome view's scale, not that of the chromosome shown in between.
void TestPick::pickAfterPick() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(),
                       {boxAround(firstColumnOf(143)), "dump c", "click globalButton",
                        boxAround(firstColumnOf(32)), "dump b"}));
    QCOMPARE(run.state("c").integers("Pos_list"), QList<int>({10000, 20000}));
    QCOMPARE(run.state("b").integers("Pos_list"), QList<int>({500, 1500, 2500}));
    QCOMPARE(run.log().count("pixPerX 4.10256 minX -6\n"), 2);
    QCOMPARE(run.log().count("Get GLOBAL"), 1);
}

// Picking a chromosome again brings its removed points back.
void TestPick::pickAfterZoomAndGlobal() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(),
                       {"box 195 0 209 600", "box 195 0 399 600", "click removeButton",
                        "dump removed", "click globalButton", "box 195 0 209 600", "dump again"}));
    QCOMPARE(run.state("removed").integers("Pos_list2"), QList<int>({500, 2500}));
    QCOMPARE(run.state("again").integers("Pos_list2"), QList<int>({500, 1500, 2500}));
    QCOMPARE(run.state("again").integer("globaltimes"), 6);
}

// Whichever entry of a label is picked, its first block is loaded.
void TestPick::labelThatReturns() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::table({{"A", 100, "0.1"},
                                       {"A", 5100, "0.2"},
                                       {"B", 100, "0.1"},
                                       {"B", 5100, "0.01"},
                                       {"A", 90000, "0.1"},
                                       {"A", 95000, "0.001"}}),
                       {"dump genome", "box 613 0 615 600", "dump a"}));
    QCOMPARE(run.state("genome").texts("Tag"), QStringList({"A", "B", "A"}));
    QCOMPARE(run.state("genome").integers("Color_value"), QList<int>({255, 50, 255}));
    QCOMPARE(run.state("a").integer("selected_chromosome"), 2);
    QCOMPARE(run.state("a").integers("Pos_list"), QList<int>({100, 5100}));
}

void TestPick::loggedScale_data() {
    QTest::addColumn<int>("last"); // position on chromosome 2
    QTest::addColumn<QByteArray>("logged");
    QTest::newRow("half a pixel") << 116200
                                  << QByteArray("position 545 start 1 end 3 pixPerX 0.5 minX -57");
    QTest::newRow("six digits, scientific")
        << 2000000000
        << QByteArray("position 9346876 start 1 end 3 pixPerX 2.90909e-05 minX -999999");
}

void TestPick::loggedScale() {
    QFETCH(int, last);
    QFETCH(QByteArray, logged);
    DrivenRun run;
    QVERIFY(run.playOn(
        samples::table({{"1", 0, "0.1"}, {"1", 100, "0.2"}, {"2", 0, "0.1"}, {"2", last, "0.01"}}),
        {"dump genome", "box 300 0 302 600"}));
    QCOMPARE(run.state("genome").integers("Pos_list"), QList<int>({1, 2, 3, 3 + last / 100}));
    QVERIFY2(run.log().contains("select chrom 1 0 point 301 " + logged + "\n\n"), run.log());
}

// The scan skips the line of B and sees one block of A; the load of A stops at that line.
void TestPick::blockEndsAtSkippedLine() {
    DrivenRun run;
    QVERIFY(run.playOn("chr pos pval\nA 100 0.1\nA 200 0.2\nB 300 NA\nA 400 0.3\nC 500 0.1\n"
                       "C 600 0.2\n",
                       {"dump genome", "box 0 0 2 600", "dump a"}));
    QCOMPARE(run.state("genome").texts("Tag"), QStringList({"A", "C"}));
    QCOMPARE(run.state("a").integers("Pos_list"), QList<int>({100, 200}));
}

QTEST_MAIN(TestPick)
#include "tst_pick.moc"
