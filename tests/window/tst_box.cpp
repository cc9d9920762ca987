#include "driven_run.h"
#include "samples.h"

#include <QTest>

// The selection box: its corners, its rubber band, and when it counts. On the ruler sample one
// pixel column is one base pair, and column 0 is position 971.
class TestBox : public QObject {
    Q_OBJECT

private slots:
    void directions_data();
    void directions();
    void beyondEdges_data();
    void beyondEdges();
    void clickDoesNothing();
    void strokes_data();
    void strokes();
    void boxesThatCount_data();
    void boxesThatCount();
    void bandFollowsMouse();
    void bandIsLeftAsItWas();
    void nextPressReplacesBand();
    void mouseWithoutButton();
    void sameBoxInBothViews();
};

static QString boxCommand(QPoint from, QPoint to) {
    return QStringLiteral("box %1 %2 %3 %4").arg(from.x()).arg(from.y()).arg(to.x()).arg(to.y());
}

void TestBox::directions_data() {
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    QTest::newRow("down right") << QPoint(120, 100) << QPoint(340, 450);
    QTest::newRow("down left") << QPoint(340, 100) << QPoint(120, 450);
    QTest::newRow("up right") << QPoint(120, 450) << QPoint(340, 100);
    QTest::newRow("up left") << QPoint(340, 450) << QPoint(120, 100);
}

void TestBox::directions() {
    QFETCH(QPoint, from);
    QFETCH(QPoint, to);
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(), {boxCommand(from, to), "dump a"}));
    const State state = run.state("a");
    QCOMPARE(state.point("boxStart"), QPoint(120, 100));
    QCOMPARE(state.point("boxEnd"), QPoint(340, 450));
    QCOMPARE(state.integers("Pos_list"), QList<int>({1100, 1200, 1300}));
    QCOMPARE(state.integers("Pos_list2").size(), 7);
    QVERIFY(!state.isVisible("rubberBand"));
    QCOMPARE(
        ExpectedView(state.integers("Pos_list"), state.numbers("Value_list")).differencesTo(state),
        QStringList());
}

void TestBox::beyondEdges_data() {
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<QPoint>("start");
    QTest::addColumn<QPoint>("end");
    const QPoint edge(9999, 9999); // stands for the label's bottom right
    QTest::newRow("left and top") << QPoint(300, 300) << QPoint(-40, -30) << QPoint(0, 0)
                                  << QPoint(300, 300);
    QTest::newRow("left") << QPoint(300, 200) << QPoint(-1, 300) << QPoint(0, 200)
                          << QPoint(300, 300);
    QTest::newRow("top") << QPoint(300, 200) << QPoint(100, -1) << QPoint(100, 0)
                         << QPoint(300, 200);
    QTest::newRow("right and bottom")
        << QPoint(300, 300) << QPoint(5000, 4000) << QPoint(300, 300) << edge;
    QTest::newRow("begun outside")
        << QPoint(-3, -2) << QPoint(200, 210) << QPoint(0, 0) << QPoint(200, 210);
    QTest::newRow("all over") << QPoint(-5, -5) << QPoint(3000, 3000) << QPoint(0, 0) << edge;
}

// Corners are clamped to the label's size, one past its last column and row.
void TestBox::beyondEdges() {
    QFETCH(QPoint, from);
    QFETCH(QPoint, to);
    QFETCH(QPoint, start);
    QFETCH(QPoint, end);
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(), {"dump before", boxCommand(from, to), "dump a"}));
    const QSize label = run.state("before").geometry("imageLabel").size();
    if (end.x() == 9999)
        end = {label.width(), label.height()};
    QCOMPARE(run.state("a").point("boxStart"), start);
    QCOMPARE(run.state("a").point("boxEnd"), end);
    QCOMPARE(run.state("a").integer("globaltimes"), 2);
}

void TestBox::clickDoesNothing() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"dump before", "press 200 300", "release 200 300", "dump a"}));
    const State before = run.state("before"), state = run.state("a");
    QCOMPARE(state.integer("globaltimes"), 1);
    QCOMPARE(state.integers("Pos_list"), before.integers("Pos_list"));
    QCOMPARE(state.picture("shown"), before.picture("shown"));
    QVERIFY(state.geometry("rubberBand").isEmpty()); // shown, but without any area
    QCOMPARE(state.geometry("rubberBand").topLeft(), QPoint(200, 300));
    QCOMPARE(state.log(), before.log());
}

void TestBox::strokes_data() {
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<QRect>("band");
    QTest::newRow("vertical") << QPoint(200, 400) << QRect(200, 100, 1, 301);
    QTest::newRow("horizontal") << QPoint(500, 100) << QRect(200, 100, 301, 1);
}

void TestBox::strokes() {
    QFETCH(QPoint, to);
    QFETCH(QRect, band);
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {boxCommand({200, 100}, to), "dump a"}));
    const State state = run.state("a");
    QCOMPARE(state.integer("globaltimes"), 1);
    QCOMPARE(state.integer("globaldisplay"), 1);
    QVERIFY(state.isVisible("rubberBand"));
    QCOMPARE(state.geometry("rubberBand"), band);
    QCOMPARE(run.log(), QByteArray(logHeader) + "Get GLOBAL\n");
}

void TestBox::boxesThatCount_data() {
    QTest::addColumn<QString>("box");
    QTest::addColumn<QList<int>>("inside");
    for (const QString button : {"left", "right", "middle"})
        QTest::newRow(qPrintable(button))
            << "120 100 340 450 " + button << QList<int>{1100, 1200, 1300};
    QTest::newRow("one pixel") << QStringLiteral("129 420 130 421") << QList<int>{1100};
}

void TestBox::boxesThatCount() {
    QFETCH(QString, box);
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(), {"box " + box, "dump a"}));
    QTEST(run.state("a").integers("Pos_list"), "inside");
    QCOMPARE(run.state("a").integer("globaltimes"), 2);
}

// While dragging, nothing is clamped and the band is always a normalized rectangle.
void TestBox::bandFollowsMouse() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"press 200 300", "dump pressed", "move 250 340", "dump right",
                        "move 150 -20", "dump left", "release 150 100", "dump released"}));
    const State pressed = run.state("pressed");
    QVERIFY(pressed.isVisible("rubberBand"));
    QVERIFY(pressed.geometry("rubberBand").isEmpty());
    QCOMPARE(pressed.point("boxStart"), QPoint(200, 300));
    QCOMPARE(run.state("right").geometry("rubberBand"), QRect(200, 300, 51, 41));
    QCOMPARE(run.state("left").geometry("rubberBand"),
             QRect(QPoint(200, 300), QPoint(150, -20)).normalized());
    QCOMPARE(run.state("left").point("boxEnd"), QPoint(150, -20));
    QCOMPARE(run.state("left").integer("globaltimes"), 1);
    QCOMPARE(run.state("released").point("boxStart"), QPoint(150, 100));
    QCOMPARE(run.state("released").point("boxEnd"), QPoint(200, 300));
    QVERIFY(!run.state("released").isVisible("rubberBand"));
    QCOMPARE(run.state("released").geometry("rubberBand"),
             run.state("left").geometry("rubberBand"));
}

// A release in the column of the press does not count, and the band stays as the last move drew it.
void TestBox::bandIsLeftAsItWas() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"press 200 300", "move 250 340", "release 200 380", "dump a"}));
    QVERIFY(run.state("a").isVisible("rubberBand"));
    QCOMPARE(run.state("a").geometry("rubberBand"), QRect(200, 300, 51, 41));
    QCOMPARE(run.state("a").point("boxEnd"), QPoint(200, 380));
    QCOMPARE(run.state("a").integer("globaltimes"), 1);
}

void TestBox::nextPressReplacesBand() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"box 200 100 200 300", "press 400 50", "dump a", "release 400 50"}));
    QVERIFY(run.state("a").geometry("rubberBand").isEmpty());
    QCOMPARE(run.state("a").geometry("rubberBand").topLeft(), QPoint(400, 50));
}

void TestBox::mouseWithoutButton() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"dump before", "hover 200 300", "hover 250 310", "dump a"}));
    QCOMPARE(run.state("a").point("boxEnd"), QPoint(0, 0));
    QCOMPARE(run.state("a").unlabelled(), run.state("before").unlabelled());
}

void TestBox::sameBoxInBothViews() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(),
                       {"box 195 0 209 600", "dump picked", "box 195 0 399 600", "dump zoomed",
                        "click globalButton", "box 195 0 399 600", "dump again"}));
    QCOMPARE(run.state("picked").integers("Pos_list"), QList<int>({500, 1500, 2500}));
    QCOMPARE(run.state("zoomed").integers("Pos_list"), QList<int>({1500}));
    QCOMPARE(run.state("zoomed").integers("Pos_list2"), QList<int>({500, 1500, 2500}));
    QCOMPARE(run.state("again").integer("selected_chromosome"), 0);
    QCOMPARE(run.state("again").integers("Pos_list"), QList<int>({1000, 2000, 3000}));
}

QTEST_MAIN(TestBox)
#include "tst_box.moc"
