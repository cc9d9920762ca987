#include "driven_run.h"
#include "samples.h"

#include <QTest>

// The variables that the commands share, across files, and those that are never reset.
class TestSession : public QObject {
    Q_OBJECT

private slots:
    void editingBeforeAnyView();
    void sessionOfGenome();
    void sessionOfChromosome();
    void secondFileReplacesIndex();
    void globalScaleIsFirstFiles();
    void globalScaleNeverCaptured();
    void optionsCarryOver();
    void everyViewIsCounted();
    void examples();
};

static void addFiles(DrivenRun& run) {
    run.addFile("one.txt", samples::chromosomeTable());
    run.addFile("many.txt", samples::genomeTable());
    run.addFile("other.txt",
                samples::table(
                    {{"X", 100, "0.2"}, {"X", 90100, "0.1"}, {"Y", 5, "1e-9"}, {"Y", 605, "0.3"}}));
}

using Index = QList<QList<int>>;

// Start and end of each chromosome, as point index and as genome coordinate, and its color.
static Index indexOf(const State& state) {
    return {state.integers("Start_index"), state.integers("End_index"),
            state.integers("Start_value"), state.integers("End_value"),
            state.integers("Color_value")};
}

// Before the first view there is nothing to remove or save.
void TestSession::editingBeforeAnyView() {
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    QVERIFY(
        run.playTo(0, {"dialog a", "invokeindialog removeSelection", "invokeindialog saveAndRemove",
                       "dialog b", "open data.txt", "click exitButton"}));
    QCOMPARE(run.state("a").integer("minX"), -1);
    QCOMPARE(run.state("b").unlabelled(), run.state("a").unlabelled());
}

void TestSession::sessionOfGenome() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"dump a"}));
    const State state = run.state("a");
    QCOMPARE(samples::genomeView().differencesTo(state), QStringList());
    QCOMPARE(state.integers("Pos_list2"), samples::genomeCoordinates());
    QCOMPARE(state.numbers("Value_list2"), samples::values(samples::genome()));
    QCOMPARE(state.texts("Tag"), QStringList({"A", "B", "C"}));
    QCOMPARE(indexOf(state),
             Index({{0, 4, 7}, {3, 6, 7}, {1, 32, 143}, {22, 43, 143}, {255, 50, 255}}));
    QCOMPARE(state.integer("selected_chromosome"), -1);
    QCOMPARE(state.integer("globaltimes"), 1);
    QCOMPARE(state.integer("GLOBAL_minX"), -6);
    QCOMPARE(state.integer("GLOBAL_maxX"), 150);
    QCOMPARE(state.number("GLOBAL_pixPerX"), 640.0 / 156);
    QCOMPARE(state.number("GLOBAL_pixPerY"), state.number("pixPerY"));
    QCOMPARE(run.log(), QByteArray(logHeader) + "Get GLOBAL\n");
}

void TestSession::sessionOfChromosome() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(), {"dump a"}));
    const State state = run.state("a");
    QCOMPARE(samples::chromosomeView().differencesTo(state), QStringList());
    QCOMPARE(state.integers("Pos_list2"), samples::positions(samples::chromosome()));
    QCOMPARE(state.texts("Tag"), QStringList({"7"}));
    QCOMPARE(indexOf(state), Index({{0}, {7}, {1}, {1001}, {255}}));
    QCOMPARE(state.integer("selected_chromosome"), 0);
    QCOMPARE(state.integer("globaldisplay"), 0);
    QCOMPARE(state.integer("globaltimes"), 1);
    QCOMPARE(state.bytes("filename").left(state.bytes("filename").indexOf('\0')),
             QFile::encodeName(run.path("data.txt")));
    QCOMPARE(state.bytes("shortname"), "data.txt" + QByteArray(42, '\0'));
    QCOMPARE(run.log(), QByteArray(logHeader) + "selected chromosome by getManhattan 7\n");
}

void TestSession::secondFileReplacesIndex() {
    DrivenRun run;
    addFiles(run);
    QVERIFY(run.playTo(0, {"open many.txt", "click newFileButton", "open other.txt", "dump two",
                           "click newFileButton", "open one.txt", "dump one", "click exitButton"}));
    const State two = run.state("two"), one = run.state("one");
    QCOMPARE(two.texts("Tag"), QStringList({"X", "Y"}));
    QCOMPARE(indexOf(two), Index({{0, 3}, {2, 3}, {1, 908}, {902, 908}, {255, 50}}));
    QCOMPARE(one.texts("Tag"), QStringList({"7"}));
    QCOMPARE(indexOf(one), Index({{0}, {7}, {1}, {1001}, {255}}));
}

// The second file's chromosomes are picked by the first file's scale: column 602 is coordinate 140,
// where by its own scale it would be 893.
void TestSession::globalScaleIsFirstFiles() {
    DrivenRun run;
    addFiles(run);
    QVERIFY(run.playTo(0, {"open many.txt", "dump first", "click newFileButton", "open other.txt",
                           "dump second", "box 582 10 622 90", "dump picked", "click exitButton"}));
    const State first = run.state("first"), second = run.state("second");
    for (const char* name : {"GLOBAL_minX", "GLOBAL_maxX", "GLOBAL_pixPerX", "GLOBAL_pixPerY"}) {
        QCOMPARE(second.object()[name], first.object()[name]);
        QCOMPARE(run.state("picked").object()[name], first.object()[name]);
    }
    QCOMPARE(first.log(), QByteArray(logHeader) + "Get GLOBAL\n"); // only here
    QCOMPARE(second.log(), logHeader);
    QCOMPARE(second.integers("Pos_list"), QList<int>({1, 901, 902, 908}));
    QCOMPARE(second.integer("maxX"), 908 + 45);
    QCOMPARE(second.integer("globaltimes"), 2);
    QCOMPARE(run.log(), QByteArray(logHeader) +
                            "select chrom X 0 point 602 position 140 start 1 end 902 pixPerX "
                            "4.10256 minX -6\n\nselected chromosome by getManhattan X\n");
}

// After a first file of one chromosome the scale is never captured, and every pick falls back to A.
void TestSession::globalScaleNeverCaptured() {
    DrivenRun run;
    addFiles(run);
    QVERIFY(run.playTo(0, {"open one.txt", "dump one", "click newFileButton", "open many.txt",
                           "dump many", "box 190 10 220 90", "dump picked", "click exitButton"}));
    const State many = run.state("many"), picked = run.state("picked");
    QVERIFY(!run.state("one").log().contains("Get GLOBAL"));
    QCOMPARE(many.log(), logHeader);
    QCOMPARE(many.integer("globaldisplay"), 1);
    QCOMPARE(many.integer("globaltimes"), 2);
    QCOMPARE(many.number("GLOBAL_pixPerX"), 0.0);
    QCOMPARE(many.integer("GLOBAL_maxX"), 0);
    QCOMPARE(picked.integers("Pos_list"), QList<int>({1000, 2000, 3000}));
    QCOMPARE(picked.integer("selected_chromosome"), 0);
    QCOMPARE(run.log(), QByteArray(logHeader) +
                            "select chrom A 0 point 205 position -2147483648 start 1 end 22 "
                            "pixPerX 0 minX 0\n\nselected chromosome by getManhattan A\n");
}

void TestSession::optionsCarryOver() {
    DrivenRun run;
    addFiles(run);
    QVERIFY(run.playTo(0, {"open one.txt", "click checkBox1", "click checkBox2",
                           "type rangeStartEdit 120000", "type rangeEndEdit 150000",
                           "set click_times 5", "set selected_chromosome 4", "click newFileButton",
                           "open many.txt", "dump many", "click newFileButton", "open one.txt",
                           "dump one", "click exitButton"}));
    const State many = run.state("many"), one = run.state("one");
    GenomePlot genome = samples::genomeLook("many.txt");
    genome.referenceLines = false;
    QCOMPARE(many.picture("shown"), picture(expectedGenomePlot(samples::genomeView(), genome)));
    QCOMPARE(many.integer("click_times"), 0);
    QCOMPARE(many.integer("selected_chromosome"), 4);
    QCOMPARE(one.integer("selected_chromosome"), 0);
    QCOMPARE(one.integer("line"), 1);
    QCOMPARE(one.integer("stripes"), 0);
    QVERIFY(one.widget("checkBox1")["checked"].toBool());
    QVERIFY(!one.widget("checkBox2")["checked"].toBool());
    QCOMPARE(one.text("rangeStartEdit"), "120000");
    QCOMPARE(one.text("rangeEndEdit"), "150000");
    QCOMPARE(one.picture("shown"),
             picture(expectedChromosomePlot(samples::chromosomeView(),
                                            {{120000, 150000}, true, false})));
    QCOMPARE(one.integer("globaltimes"), 3);
}

void TestSession::everyViewIsCounted() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(),
                       {"box 300 0 400 600", "dump zoomed", "click removeButton", "dump removed",
                        "click unzoomButton", "dump unzoomed"}));
    QCOMPARE(run.state("zoomed").integer("globaltimes"), 2);
    QCOMPARE(run.state("removed").integer("globaltimes"), 4);
    QCOMPARE(run.state("unzoomed").integer("globaltimes"), 5);
}

// The example files open: a whole genome, one chromosome, and a small genome.
void TestSession::examples() {
    DrivenRun run;
    for (const QString name : {"genome_100k.txt", "chromosome1.txt", "small.txt"})
        run.addCopy(name, QStringLiteral(PELMARK_EXAMPLES "/") + name);
    QVERIFY(
        run.playTo(0, {"open genome_100k.txt", "dump genome", "box 310 0 330 600", "dump picked",
                       "click newFileButton", "open chromosome1.txt", "dump chromosome",
                       "click newFileButton", "open small.txt", "dump small", "click exitButton"}));
    QCOMPARE(run.state("genome").texts("Tag").size(), 22);
    QVERIFY(run.state("genome").object()["Pos_list"].toString().startsWith("100000 "));
    QCOMPARE(run.state("picked").integer("globaldisplay"), 0);
    QVERIFY(run.state("picked").integer("selected_chromosome") > 3);
    QCOMPARE(run.state("chromosome").texts("Tag"), QStringList({"1"}));
    QCOMPARE(run.state("chromosome").integer("realMinX"), 662622);
    QVERIFY(run.state("small").texts("Tag").size() > 1);
    QCOMPARE(run.state("small").integer("globaldisplay"), 1);
}

QTEST_MAIN(TestSession)
#include "tst_session.moc"
