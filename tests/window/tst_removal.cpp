#include "driven_run.h"
#include "samples.h"

#include <QTest>
#include <cmath>

// Zooming into a box, removing what is seen, and showing what remains. On the ruler sample one
// column stands for one position, the first for 971, and rows 420 and 180 for the values 14 and 36.
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
    // 1100 and 1400 have the value 14, 1300 has 36.
    QTest::newRow("all edges on points")
        << "box 129 180 429 420" << QList<int>{1100, 1200, 1300, 1400};
    QTest::newRow("left edge beside") << "box 130 180 429 420" << QList<int>{1200, 1300, 1400};
    QTest::newRow("right edge beside") << "box 129 180 428 420" << QList<int>{1100, 1200, 1300};
    QTest::newRow("lower edge beside") << "box 129 180 429 419" << QList<int>{1200, 1300};
    QTest::newRow("upper edge beside") << "box 129 181 429 420" << QList<int>{1100, 1200, 1400};
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

// The zoomed view of 1100..1400 goes from 1085 to 1415, its columns being 640 / 330 wide.
void TestRemoval::secondBoxUsesZoomedScale() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"box 129 180 429 420", "dump once", "box 200 0 500 600", "dump twice"}));
    const auto points = [&](const char* label) {
        return ExpectedView(run.state(label).integers("Pos_list"),
                            run.state(label).numbers("Value_list"));
    };
    QCOMPARE(run.state("once").integer("minX"), 1085);
    QCOMPARE(run.state("twice").integers("Pos_list"), QList<int>({1200, 1300}));
    QCOMPARE(points("once").differencesTo(run.state("once")), QStringList());
    QCOMPARE(points("twice").differencesTo(run.state("twice")), QStringList());
    QCOMPARE(run.state("once").picture("shown"), picture(expectedChromosomePlot(points("once"))));
    QCOMPARE(run.state("twice").picture("shown"), picture(expectedChromosomePlot(points("twice"))));
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

// The view of 1000 to 1,000,000 begins far below 0.
void TestRemoval::removeBelowZeroDoesNothing() {
    DrivenRun run;
    QVERIFY(run.playOn(
        samples::table({{"1", 1000, "0.1"}, {"1", 500000, "0.01"}, {"1", 1000000, "0.001"}}),
        {"dump a", "click removeButton", "dump b", "click saveRemoveButton", "dump c"}));
    QCOMPARE(run.state("a").integer("minX"), 1000 - 49950);
    QCOMPARE(run.state("b").unlabelled(), run.state("a").unlabelled());
    QCOMPARE(run.state("c").unlabelled(), run.state("a").unlabelled());
}

// The box holds 1100 to 1300 only; 1305, 1310 and 1095 lie within 5% of that beside it, 1311 does
// not, and a point within these positions stays when its value lies outside of the margin.
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
    QCOMPARE(run.state("removed").integers("Pos_list"), kept);
    QCOMPARE(run.state("removed").integers("Pos_list2"), kept);
    QCOMPARE(run.state("removed").numbers("Value_list"), QList<double>({0, 38, 5, 14, 50, 3}));
    QCOMPARE(run.state("removed").numbers("Value_list2"),
             run.state("removed").numbers("Value_list"));
    const ExpectedView view(kept, run.state("removed").numbers("Value_list"));
    QCOMPARE(view.differencesTo(run.state("removed")), QStringList());
    QCOMPARE(run.state("removed").picture("shown"), picture(expectedChromosomePlot(view)));
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

// Removal recomputes the range of the shown points first. No command leaves another range behind,
// so the test sets one, which would spare 1100 and 1200.
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

// One point has no range: it is drawn in the middle, where a box finds it.
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

// Two points at one position stand above each other in the middle, two of one value side by side.
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

// First and last entry are the range as they stand, also where they run backwards.
void TestRemoval::unsortedPositions() {
    DrivenRun run;
    QVERIFY(
        run.playOn(samples::table({{"1", 5000, "0.1"}, {"1", 1000, "0.01"}, {"1", 3000, "0.001"}}),
                   {"dump a", "box 300 0 640 600", "dump b"}));
    const ExpectedView view({5000, 1000, 3000}, {1, 2, 3});
    QCOMPARE(view.differencesTo(run.state("a")), QStringList());
    QCOMPARE(run.state("a").integer("minX"), 5100);
    QCOMPARE(run.state("a").integer("maxX"), 2900);
    QCOMPARE(run.state("a").picture("shown"), picture(expectedChromosomePlot(view)));
    QCOMPARE(run.state("b").integers("Pos_list"), QList<int>({3000}));
}

// Hidden there, but a chromosome view when called: of the genome's points.
void TestRemoval::unzoomInGenomeView() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"invoke showRemaining", "dump a"}));
    QCOMPARE(run.state("a").integer("globaldisplay"), 0);
    QCOMPARE(run.state("a").integer("globaltimes"), 2);
    QCOMPARE(run.state("a").picture("shown"),
             picture(expectedChromosomePlot(samples::genomeView())));
}

QTEST_MAIN(TestRemoval)
#include "tst_removal.moc"
