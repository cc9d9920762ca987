#include "driven_run.h"
#include "samples.h"

#include <QTest>
#include <utility>

// The two views: which widgets they show, what they draw, and how the commands switch between them.
class TestViews : public QObject {
    Q_OBJECT

private slots:
    void genomeView();
    void chromosomeView();
    void chromosomeDots();
    void globalOnOneChromosome();
    void globalShowsKeptPlot();
    void checkBoxes();
    void partlyCheckedBoxes();
    void checkBoxCommandInGenomeView();
    void displayLocalLeavesImage();
    void noSecondChromosomeToShow();
    void highlight_data();
    void highlight();
    void typingAloneDrawsNothing();
    void mnemonics();
    void notANumber();
    void nameIsNotMarkup();
};

static const QStringList genomeWidgets{"exitButton", "hintLabel",     "imageLabel",
                                       "nameLabel",  "newFileButton", "saveButton"};
static const QStringList chromosomeWidgets{
    "checkBox1",    "checkBox2",  "exitButton",       "globalButton", "hintLabel",
    "imageLabel",   "nameLabel",  "newFileButton",    "rangeEndEdit", "rangeStartEdit",
    "removeButton", "saveButton", "saveRemoveButton", "unzoomButton"};

static QStringList visibleWidgets(const State& state) {
    QStringList visible;
    const QStringList names = state.window()["widgets"].toObject().keys();
    for (const QString& name : names)
        if (name != "rubberBand" && state.isVisible(name.toLatin1()))
            visible.append(name);
    return visible;
}

static QString genomePicture() {
    return picture(expectedGenomePlot(samples::genomeView(), samples::genomeLook("data.txt")));
}

static QString chromosomePicture(const ChromosomePlot& plot = {{}, false, true}) {
    return picture(expectedChromosomePlot(samples::chromosomeView(), plot));
}

// The middle column of this box is coordinate 43, which only chromosome B contains.
static const char* const boxOverB = "box 195 100 209 200";

void TestViews::genomeView() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"dump a", "grab a.png"}));
    const State state = run.state("a");
    QCOMPARE(visibleWidgets(state), genomeWidgets);
    QCOMPARE(state.text("hintLabel"),
             "HINT: Draw a box in or around a chromosome to select an entire chromsome");
    QCOMPARE(state.text("nameLabel"), "data.txt");
    QCOMPARE(state.integer("globaldisplay"), 1);
    const ExpectedView view = samples::genomeView();
    QCOMPARE(view.differencesTo(state), QStringList());
    QCOMPARE(state.picture("shown"), genomePicture());
    QCOMPARE(state.picture("genomePixmap"), genomePicture());
    const QImage image = run.image("a.png");
    QCOMPARE(image.pixelColor(view.x(11), view.y(view.values[1])), QColor(255, 50, 50));
    QCOMPARE(image.pixelColor(view.x(32), view.y(view.values[4])), QColor(50, 50, 50));
    QCOMPARE(image.pixelColor(view.x(143), view.y(view.values[7])), QColor(255, 50, 50));
    QCOMPARE(image.pixelColor(0, 300), QColor(Qt::white));
    QCOMPARE(image.pixelColor(320, view.y(7.3)), QColor(25, 180, 25));
    for (const auto& [level, gray] : {std::pair(6, 140), {5, 170}, {4, 200}, {3, 230}})
        QCOMPARE(image.pixelColor(320, view.y(level)), QColor(gray, gray, gray));
}

void TestViews::chromosomeView() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {boxOverB, "dump a"}));
    const State state = run.state("a");
    QCOMPARE(visibleWidgets(state), chromosomeWidgets);
    QCOMPARE(state.text("hintLabel"), "");
    QCOMPARE(state.text("nameLabel"), "data.txt");
    QCOMPARE(state.integer("globaldisplay"), 0);
    const ExpectedView view({500, 1500, 2500}, samples::values(samples::genome()).mid(3, 3));
    QCOMPARE(view.differencesTo(state), QStringList());
    QCOMPARE(state.integers("Pos_list2"), view.positions);
    QCOMPARE(state.numbers("Value_list2"), view.values);
    QCOMPARE(state.picture("shown"), picture(expectedChromosomePlot(view)));
    QCOMPARE(state.picture("plotPixmap"), state.picture("shown"));
    QCOMPARE(state.picture("plotImage"), state.picture("shown"));
    QCOMPARE(state.picture("genomePixmap"), genomePicture());
}

void TestViews::chromosomeDots() {
    DrivenRun run;
    QVERIFY(
        run.playOn(samples::chromosomeTable(), {"grab a.png", "click checkBox2", "grab b.png"}));
    const ExpectedView view = samples::chromosomeView();
    const QColor blue(50, 50, 255), green(25, 180, 25);
    const QImage image = run.image("a.png");
    for (qsizetype i = 0; i < view.positions.size(); ++i)
        QCOMPARE(image.pixelColor(view.x(view.positions[i]), view.y(view.values[i])), blue);
    QCOMPARE(image.size(), QSize(640, 600));
    QCOMPARE(image.pixelColor(600, view.y(7.3)), green);
    const QImage plain = run.image("b.png");
    QCOMPARE(pixelsOf(plain, green), 0);
    QCOMPARE(pixelsOf(plain, blue), 8 * 4 * 4); // each dot as wide as the pen
}

void TestViews::globalOnOneChromosome() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(), {"dump a", "click globalButton", "dump b"}));
    QCOMPARE(visibleWidgets(run.state("a")), chromosomeWidgets);
    QCOMPARE(run.state("a").text("hintLabel"), "");
    QCOMPARE(run.state("a").integer("globaldisplay"), 0);
    QCOMPARE(run.state("b").unlabelled(), run.state("a").unlabelled());
}

void TestViews::globalShowsKeptPlot() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(),
                       {boxOverB, "box 200 0 400 590", "click removeButton", "dump local",
                        "click globalButton", "dump global", "click saveButton"}));
    const State local = run.state("local"), global = run.state("global");
    QCOMPARE(local.integers("Pos_list"), QList<int>({500, 2500}));
    QCOMPARE(visibleWidgets(global), genomeWidgets);
    QCOMPARE(global.text("hintLabel"),
             "HINT: Draw a box in or around a chromosome to select an entire chromsome");
    QCOMPARE(global.picture("shown"), genomePicture());
    QCOMPARE(global.integer("globaldisplay"), 1);
    QCOMPARE(global.picture("plotPixmap"), local.picture("plotPixmap"));
    for (const char* name : {"Pos_list", "Value_list", "Pos_list2", "minX", "maxX", "minY", "maxY",
                             "pixPerX", "pixPerY", "globaltimes", "selected_chromosome"})
        QVERIFY2(global.object()[name] == local.object()[name], name);
    QCOMPARE(picture(run.image("data.txt.png")), genomePicture());
}

static void checkOptions(const State& state, const ChromosomePlot& plot) {
    QCOMPARE(state.integer("line"), static_cast<int>(plot.joined));
    QCOMPARE(state.integer("stripes"), static_cast<int>(plot.referenceLines));
    QCOMPARE(state.picture("shown"), chromosomePicture(plot));
    QCOMPARE(state.picture("plotImage"), state.picture("shown"));
    QCOMPARE(state.integer("globaltimes"), 1);
}

void TestViews::checkBoxes() {
    DrivenRun run;
    QVERIFY(
        run.playOn(samples::chromosomeTable(),
                   {"dump start", "click checkBox1", "dump joined", "click checkBox2", "dump bare",
                    "click checkBox1", "dump dots", "click checkBox2", "dump end"}));
    checkOptions(run.state("start"), {{}, false, true});
    checkOptions(run.state("joined"), {{}, true, true});
    checkOptions(run.state("bare"), {{}, true, false});
    checkOptions(run.state("dots"), {{}, false, false});
    checkOptions(run.state("end"), {{}, false, true});
    QVERIFY(chromosomePicture({{}, true, true}) != chromosomePicture());
}

// A partly checked box leaves its flag alone but redraws, as the widening highlight shows. The
// clicks then turn the one option on and the other off.
void TestViews::partlyCheckedBoxes() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(),
                       {"type rangeStartEdit 1-120000", "partly checkBox1", "dump off 1",
                        "type rangeStartEdit 1-140000", "partly checkBox2", "dump on 2",
                        "click checkBox1", "click checkBox2", "click checkBox2",
                        "type rangeStartEdit 1-151000", "partly checkBox1", "dump on 1",
                        "type rangeStartEdit 1-180000", "partly checkBox2", "dump off 2"}));
    checkOptions(run.state("off 1"), {{1, 120000}, false, true});
    checkOptions(run.state("on 2"), {{1, 140000}, false, true});
    checkOptions(run.state("on 1"), {{1, 151000}, true, false});
    checkOptions(run.state("off 2"), {{1, 180000}, true, false});
}

void TestViews::checkBoxCommandInGenomeView() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(),
                       {"invoke checkBox1Action", "dump a", "click globalButton", "dump b"}));
    QCOMPARE(run.state("a").integer("globaldisplay"), 0);
    QCOMPARE(visibleWidgets(run.state("a")), chromosomeWidgets);
    QCOMPARE(run.state("a").picture("shown"),
             picture(expectedChromosomePlot(samples::genomeView())));
    QCOMPARE(run.state("b").picture("shown"), genomePicture());
}

void TestViews::displayLocalLeavesImage() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"invoke displayLocal", "dump a"}));
    QCOMPARE(visibleWidgets(run.state("a")), chromosomeWidgets);
    QCOMPARE(run.state("a").integer("globaldisplay"), 0);
    QCOMPARE(run.state("a").text("hintLabel"), "");
    QCOMPARE(run.state("a").picture("shown"), genomePicture());
}

// A genome plot of a single chromosome is drawn and kept, but not shown.
void TestViews::noSecondChromosomeToShow() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(), {"invoke reloadPhoto0", "dump a"}));
    const State state = run.state("a");
    QCOMPARE(
        state.picture("genomePixmap"),
        picture(expectedGenomePlot(samples::chromosomeView(), genomePlot("data.txt", {"7"}, {1}))));
    QCOMPARE(state.picture("shown"), chromosomePicture());
    QCOMPARE(visibleWidgets(state), chromosomeWidgets);
    QCOMPARE(state.text("hintLabel"), "");
    QCOMPARE(state.integer("globaldisplay"), 1);
}

void TestViews::highlight_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    const auto row = [](const char* name, const QString& start, const QString& end, int from,
                        int to) { QTest::newRow(name) << start << end << from << to; };
    row("both empty", "", "", 0, 0);
    row("both in the first field", "140000-151000", "x", 140000, 151000);
    row("one in each field", "140000", "151000", 140000, 151000);
    row("second is no number", "140000", "x", 0, 0);
    row("first is no number", "x", "151000", 0, 0);
    row("negative first", "-5", "200000", 0, 0);
    row("three parts", "1-140000-200000", "200000", 0, 0);
    row("lower above upper", "151000", "140000", 1, 0);
    row("one position", "150000", "150000", 150000, 150000);
}

void TestViews::highlight() {
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(int, from);
    QFETCH(int, to);
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(),
                       {"type rangeStartEdit " + start, "type rangeEndEdit " + end,
                        "click unzoomButton", "dump dots", "click checkBox1", "dump joined"}));
    QCOMPARE(run.state("dots").picture("shown"), chromosomePicture({{from, to}, false, true}));
    QCOMPARE(run.state("joined").picture("shown"), chromosomePicture({{from, to}, true, true}));
}

void TestViews::typingAloneDrawsNothing() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(), {"type rangeStartEdit 1-999999", "dump a"}));
    QCOMPARE(run.state("a").text("rangeStartEdit"), "1-999999");
    QCOMPARE(run.state("a").picture("shown"), chromosomePicture());
}

void TestViews::mnemonics() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    QVERIFY(
        run.playTo(0, {"open data.txt", boxOverB, "box 200 0 400 590", "keys Alt+R", "dump removed",
                       "box 0 0 200 600", "dump zoomed", "keys Alt+U", "dump unzoomed",
                       "keys Alt+S", "name saved", "keys Alt+A", "name removed", "dump nothing",
                       "keys Alt+G", "dump global", "keys Alt+N", "cancel", "keys Alt+E"}));
    QCOMPARE(run.state("removed").integers("Pos_list"), QList<int>({500, 2500}));
    QCOMPARE(run.state("zoomed").integers("Pos_list"), QList<int>({500}));
    QCOMPARE(run.state("unzoomed").integers("Pos_list"), QList<int>({500, 2500}));
    QVERIFY(run.exists("saved.txt"));
    QVERIFY(run.exists("removed.txt"));
    QCOMPARE(run.state("nothing").integers("Pos_list2"), QList<int>());
    QCOMPARE(visibleWidgets(run.state("global")), genomeWidgets);
    QCOMPARE(run.log(), logHeader); // restarted by the dialog for a new file
}

// A point whose value is not a number is not drawn, nor is any segment to or from it.
void TestViews::notANumber() {
    QList<samples::Marker> markers = samples::chromosome();
    markers.insert(3, {"7", 145000, "-1"});
    DrivenRun run;
    QVERIFY(
        run.playOn(samples::table(markers), {"dump dots", "click checkBox1", "grab joined.png"}));
    QCOMPARE(run.state("dots").integers("Pos_list").size(), 9);
    QCOMPARE(run.state("dots").picture("shown"), chromosomePicture());
    const ExpectedView view = samples::chromosomeView();
    const QImage joined = run.image("joined.png");
    const auto colorBetween = [&](int i) {
        const int x = (view.x(view.positions[i]) + view.x(view.positions[i + 1])) / 2;
        const int y = (view.y(view.values[i]) + view.y(view.values[i + 1])) / 2;
        return joined.pixelColor(x, y);
    };
    QCOMPARE(colorBetween(1), QColor(50, 50, 255));
    QCOMPARE(colorBetween(2), QColor(Qt::white));
    QCOMPARE(colorBetween(4), QColor(50, 50, 255));
}

void TestViews::nameIsNotMarkup() {
    DrivenRun run;
    run.addFile("<b>x<b>.txt", samples::genomeTable());
    QVERIFY(run.playTo(0, {"open <b>x<b>.txt", "dump a", "click exitButton"}));
    QCOMPARE(run.state("a").text("nameLabel"), "<b>x<b>.txt");
    QCOMPARE(run.state("a").widget("nameLabel")["format"].toInt(), static_cast<int>(Qt::PlainText));
}

QTEST_MAIN(TestViews)
#include "tst_views.moc"
