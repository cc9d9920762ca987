#include "driven_run.h"
#include "samples.h"

#include <QTest>
#include <cmath>

// Zooming into a box, removing the shown points, and showing the rest. On the ruler sample one
// pixel column is one base pair, column 0 is position 971, and rows 420 and 180 are the values 14
// and 36.
class TestRemoval : public QObject {
    Q_OBJECT

private slots:
    void boxEdges_data();
    void boxEdges();
    void secondBoxUsesZoomedScale();
    void removeWithoutZoom();
    void removeBelowZeroDoesNothing();
    void marginIsRemovedToo();
    void unzoomShowsKeptOnly();
    void removalKeepsOrder();
    void removalUsesShownRange();
    void emptyBox();
    void emptySetIsSaved();
    void onePoint();
    void equalPositions();
    void notANumberIsInNoBox();
    void unsortedPositions();
    void unzoomInGenomeView();
};

void TestRemoval::boxEdges_data() {
    QTest::addColumn<QString>("box");
    QTest::addColumn<QList<int>>("kept");
    // The value at 1100 and 1400 is 14; at 1300 it is 36.
    QTest::newRow("all edges on points")
        << "box 129 180 429 420" << QList<int>{1100, 1200, 1300, 1400};
    QTest::newRow("left edge just inside") << "box 130 180 429 420" << QList<int>{1200, 1300, 1400};
    QTest::newRow("right edge just inside")
        << "box 129 180 428 420" << QList<int>{1100, 1200, 1300};
    QTest::newRow("lower edge just inside") << "box 129 180 429 419" << QList<int>{1200, 1300};
    QTest::newRow("upper edge just inside")
        << "box 129 181 429 420" << QList<int>{1100, 1200, 1400};
    QTest::newRow("whole height") << "box 129 0 429 600" << QList<int>{1100, 1200, 1300, 1400};
    QTest::newRow("last point at the right edge") << "box 611 0 629 600" << QList<int>{1582};
    QTest::newRow("first point at the left edge") << "box 0 0 29 600" << QList<int>{1000};
}

void TestRemoval::boxEdges() {
    QFETCH(QString, box);
    QFETCH(QList<int>, kept);
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(), {"dump before", box, "dump a"}));
    QCOMPARE(run.state("before").integer("minX"), 971);
    QCOMPARE(run.state("before").number("pixPerX"), 1.0);
    QCOMPARE(run.state("a").integers("Pos_list"), kept);
    QCOMPARE(run.state("a").integers("Pos_list2"), samples::positions(samples::ruler()));
    QCOMPARE(run.state("a").integer("globaldisplay"), 0);
    QVERIFY(!run.state("a").isVisible("rubberBand"));
}

// Checks range, scale and picture against those computed from the shown points.
static void checkView(const State& state) {
    const ExpectedView view(state.integers("Pos_list"), state.numbers("Value_list"));
    QCOMPARE(view.differencesTo(state), QStringList());
    QCOMPARE(state.picture("shown"), picture(expectedChromosomePlot(view)));
}

// Zoomed to 1100..1400, the view spans 1085..1415, and one base pair is 640 / 330 pixels wide.
void TestRemoval::secondBoxUsesZoomedScale() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"box 129 180 429 420", "dump once", "box 200 0 500 600", "dump twice"}));
    QCOMPARE(run.state("once").integer("minX"), 1085);
    QCOMPARE(run.state("twice").integers("Pos_list"), QList<int>({1200, 1300}));
    checkView(run.state("once"));
    checkView(run.state("twice"));
}

static void checkEmpty(const State& state) {
    QCOMPARE(state.integers("Pos_list"), QList<int>());
    QCOMPARE(state.numbers("Value_list"), QList<double>());
    QCOMPARE(state.integer("minX"), -1);
    for (const char* name : {"minY", "maxY", "pixPerX", "pixPerY"})
        QVERIFY2(std::isfinite(state.number(name)), name);
    QCOMPARE(state.integer("fwidth"), 640);
    QCOMPARE(state.integer("fheight"), 600);
    QVERIFY(state.picture("shown").startsWith("640x600 "));
    QVERIFY(state.isVisible("unzoomButton"));
}

void TestRemoval::removeWithoutZoom() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"click removeButton", "dump a", "grab a.png", "click unzoomButton",
                        "dump b", "click removeButton", "dump c"}));
    checkEmpty(run.state("a"));
    QCOMPARE(run.state("a").integers("Pos_list2"), QList<int>());
    QCOMPARE(run.state("a").integer("globaltimes"), 3);
    checkEmpty(run.state("b"));
    QCOMPARE(run.state("b").integer("globaltimes"), 4);
    QCOMPARE(run.state("c").unlabelled(), run.state("b").unlabelled());
    QCOMPARE(pixelsOf(run.image("a.png"), QColor(50, 50, 255)), 0);
}

// The view of 1000..1000000 begins far below 0.
void TestRemoval::removeBelowZeroDoesNothing() {
    DrivenRun run;
    QVERIFY(run.playOn(
        samples::table({{"1", 1000, "0.1"}, {"1", 500000, "0.01"}, {"1", 1000000, "0.001"}}),
        {"dump a", "click removeButton", "dump b", "click saveRemoveButton", "dump c"}));
    QCOMPARE(run.state("a").integer("minX"), 1000 - 49950);
    QCOMPARE(run.state("b").unlabelled(), run.state("a").unlabelled());
    QCOMPARE(run.state("c").unlabelled(), run.state("a").unlabelled());
}

// The box holds 1100..1300, and removal takes a margin of 5% with it: 1095, 1305 and 1310, but not
// 1311. Points in that range of positions stay if their values lie beyond the margin.
void TestRemoval::marginIsRemovedToo() {
    const QList<samples::Marker> markers{
        {"R", 1000, "1"},     {"R", 1090, "1e-14"}, {"R", 1095, "1e-15"}, {"R", 1100, "1e-14"},
        {"R", 1150, "1e-38"}, {"R", 1200, "1e-25"}, {"R", 1250, "1e-5"},  {"R", 1300, "1e-36"},
        {"R", 1305, "1e-30"}, {"R", 1310, "1e-14"}, {"R", 1311, "1e-14"}, {"R", 1500, "1e-50"},
        {"R", 1582, "1e-3"}};
    DrivenRun run;
    QVERIFY(run.playOn(samples::table(markers), {"box 129 180 329 420", "dump zoomed",
                                                 "click removeButton", "dump removed"}));
    QCOMPARE(run.state("zoomed").integers("Pos_list"), QList<int>({1100, 1200, 1300}));
    QCOMPARE(run.state("zoomed").integer("minX"), 1090);
    const QList<int> kept{1000, 1150, 1250, 1311, 1500, 1582};
    const State removed = run.state("removed");
    QCOMPARE(removed.integers("Pos_list"), kept);
    QCOMPARE(removed.integers("Pos_list2"), kept);
    QCOMPARE(removed.numbers("Value_list"), QList<double>({0, 38, 5, 14, 50, 3}));
    QCOMPARE(removed.numbers("Value_list2"), removed.numbers("Value_list"));
    checkView(removed);
}

void TestRemoval::unzoomShowsKeptOnly() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"dump all", "box 129 0 329 600", "click unzoomButton", "dump back",
                        "box 129 0 329 600", "click removeButton", "box 0 0 100 600", "dump zoomed",
                        "click unzoomButton", "dump kept"}));
    QCOMPARE(run.state("back").integers("Pos_list"), run.state("all").integers("Pos_list"));
    QCOMPARE(run.state("back").picture("shown"), run.state("all").picture("shown"));
    QCOMPARE(run.state("back").integer("globaltimes"), 3);
    QCOMPARE(run.state("zoomed").integers("Pos_list"), QList<int>({1000}));
    const QList<int> kept{1000, 1400, 1500, 1582};
    QCOMPARE(run.state("zoomed").integers("Pos_list2"), kept);
    QCOMPARE(run.state("kept").integers("Pos_list"), kept);
    QCOMPARE(run.state("kept").integers("Pos_list2"), kept);
    QCOMPARE(run.state("kept").numbers("Value_list"), QList<double>({0, 14, 50, 3}));
}

void TestRemoval::removalKeepsOrder() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::table({{"R", 1000, "1"},
                                       {"R", 1500, "1e-9"},
                                       {"R", 1200, "1e-25"},
                                       {"R", 1400, "1e-3"},
                                       {"R", 1100, "1e-50"},
                                       {"R", 1582, "1e-4"}}),
                       {"box 220 280 240 320", "dump zoomed", "click removeButton", "dump a",
                        "box 0 0 610 600", "dump b"}));
    QCOMPARE(run.state("zoomed").integers("Pos_list"), QList<int>({1200}));
    QCOMPARE(run.state("a").integers("Pos_list2"), QList<int>({1000, 1500, 1400, 1100, 1582}));
    QCOMPARE(run.state("a").numbers("Value_list2"), QList<double>({0, 9, 3, 50, 4}));
    QCOMPARE(run.state("b").integers("Pos_list"), QList<int>({1000, 1500, 1400, 1100}));
}

// Removal first recomputes the range of the shown points. No command leaves any other range, so the
// test sets one, which would spare 1100 and 1200.
void TestRemoval::removalUsesShownRange() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"box 129 180 429 420", "set minX 1250", "click removeButton", "dump a"}));
    QCOMPARE(run.state("a").integers("Pos_list"), QList<int>({1000, 1500, 1582}));
}

void TestRemoval::emptyBox() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"dump before", "box 40 10 60 20", "dump empty", "grab empty.png",
                        "click removeButton", "click saveRemoveButton", "dump still",
                        "box 100 100 200 200", "dump boxed", "click checkBox1", "dump joined",
                        "click checkBox1", "click unzoomButton", "dump back"}));
    const State empty = run.state("empty");
    checkEmpty(empty);
    QVERIFY(!empty.isVisible("rubberBand"));
    QCOMPARE(empty.integer("globaltimes"), 2);
    QCOMPARE(empty.integers("Pos_list2"), samples::positions(samples::ruler()));
    QCOMPARE(pixelsOf(run.image("empty.png"), QColor(50, 50, 255)), 0);
    QCOMPARE(run.state("still").unlabelled(), empty.unlabelled());
    checkEmpty(run.state("boxed"));
    QCOMPARE(run.state("boxed").integers("Pos_list2"), empty.integers("Pos_list2"));
    QCOMPARE(run.state("joined").integer("line"), 1);
    QCOMPARE(run.state("back").integers("Pos_list"), samples::positions(samples::ruler()));
    QCOMPARE(run.state("back").picture("shown"), run.state("before").picture("shown"));
}

void TestRemoval::emptySetIsSaved() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"box 40 10 60 20", "dump a", "click saveButton", "name empty"}));
    QCOMPARE(run.content("empty.txt"), "Chr\tPosition\tP\t-log10(P)\n");
    QCOMPARE(picture(run.image("empty.png")), run.state("a").picture("shown"));
}

// One point spans no range: it is drawn in the middle, where a box finds it.
void TestRemoval::onePoint() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(), {"click checkBox2", "box 220 290 240 310", "dump one",
                                               "grab one.png", "box 310 290 330 310", "dump boxed",
                                               "click removeButton", "dump removed"}));
    const State one = run.state("one");
    QCOMPARE(one.integers("Pos_list"), QList<int>({1200}));
    QVERIFY(std::isinf(one.number("pixPerX")) && one.number("pixPerX") > 0);
    QVERIFY(std::isinf(one.number("pixPerY")) && one.number("pixPerY") > 0);
    QCOMPARE(one.integer("minX"), 1200);
    QCOMPARE(one.integer("maxX"), 1200);
    QCOMPARE(one.number("realMaxY"), 25.0);
    const QImage image = run.image("one.png");
    QCOMPARE(image.pixelColor(320, 300), QColor(50, 50, 255));
    QCOMPARE(pixelsOf(image, QColor(50, 50, 255)), 16);
    QCOMPARE(run.state("boxed").integers("Pos_list"), QList<int>({1200}));
    QCOMPARE(run.state("removed").integers("Pos_list2"),
             QList<int>({1000, 1100, 1300, 1400, 1500, 1582}));
}

// Points at one position share the middle column; points of one value share the middle row.
void TestRemoval::equalPositions() {
    DrivenRun run;
    run.addFile("one.txt", samples::table({{"1", 500, "0.1"}, {"1", 500, "0.001"}}));
    run.addFile("two.txt", samples::table({{"1", 500, "0.1"}, {"1", 600, "0.1"}}));
    QVERIFY(run.playTo(0, {"open one.txt", "click checkBox2", "grab one.png", "click newFileButton",
                           "open two.txt", "grab two.png", "click exitButton"}));
    const QColor blue(50, 50, 255);
    QCOMPARE(run.image("one.png").pixelColor(320, 600 - 27), blue);
    QCOMPARE(run.image("one.png").pixelColor(320, 600 - 572), blue);
    QCOMPARE(run.image("two.png").pixelColor(29, 300), blue);
    QCOMPARE(run.image("two.png").pixelColor(610, 300), blue);
}

void TestRemoval::notANumberIsInNoBox() {
    QList<samples::Marker> markers = samples::ruler();
    markers.insert(3, {"R", 1250, "-1"});
    DrivenRun run;
    QVERIFY(run.playOn(samples::table(markers), {"dump all", "box 0 0 640 600", "dump boxed",
                                                 "click removeButton", "dump removed"}));
    QVERIFY(std::isnan(run.state("all").numbers("Value_list")[3]));
    QCOMPARE(run.state("boxed").integers("Pos_list"), samples::positions(samples::ruler()));
    QCOMPARE(run.state("removed").integers("Pos_list2"), QList<int>({1250}));
}

// The range runs from the first entry to the last, even if that is backwards.
void TestRemoval::unsortedPositions() {
    DrivenRun run;
    QVERIFY(
        run.playOn(samples::table({{"1", 5000, "0.1"}, {"1", 1000, "0.01"}, {"1", 3000, "0.001"}}),
                   {"dump a", "box 300 0 640 600", "dump b"}));
    checkView(run.state("a"));
    QCOMPARE(run.state("a").integers("Pos_list"), QList<int>({5000, 1000, 3000}));
    QCOMPARE(run.state("a").integer("minX"), 5100);
    QCOMPARE(run.state("a").integer("maxX"), 2900);
    QCOMPARE(run.state("b").integers("Pos_list"), QList<int>({3000}));
}

// The button is hidden there, but the command works: it draws the genome's points as a chromosome.
void TestRemoval::unzoomInGenomeView() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"invoke showRemaining", "dump a"}));
    QCOMPARE(run.state("a").integer("globaldisplay"), 0);
    QCOMPARE(run.state("a").integer("globaltimes"), 2);
    checkView(run.state("a"));
    QCOMPARE(run.state("a").integers("Pos_list"), samples::genomeCoordinates());
}

QTEST_MAIN(TestRemoval)
#include "tst_removal.moc"
