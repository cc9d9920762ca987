#include "driven_run.h"
#include "samples.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTest>

// The file dialog, the log that it restarts, and how much of a file's name is kept.
class TestFileChoice : public QObject {
    Q_OBJECT

private slots:
    void cancelAtStart();
    void cancelLaterKeepsView();
    void workAfterCancelGoesOn();
    void dialogRestartsLog();
    void logThatCannotBeOpened();
    void logLostBeforeSecondFile();
    void oneChromosomeOpensChromosomeView();
    void twoChromosomesOpenGenomeView();
    void dialogListsDataFiles();
    void anyContentIsAccepted();
    void longNameIsCut();
    void nameCutInsideCharacter();
    void siblings_data();
    void siblings();
    void siblingsOfSecondFile();
    void dialogOpensInLastFolder();
    void pathOfExactly200Bytes();
    void pathBeyond200Bytes();
    void pathCutToAnotherFile();
};

static QByteArray bytesUpToZero(const State& state, const char* name) {
    const QByteArray bytes = state.bytes(name);
    const qsizetype zero = bytes.indexOf('\0');
    return zero < 0 ? bytes : bytes.left(zero);
}

void TestFileChoice::cancelAtStart() {
    DrivenRun run;
    QVERIFY(run.playTo(1, {"cancel"}));
    QCOMPARE(run.log(), QByteArray(logHeader) + "Input file problem!\n");
    QCOMPARE(run.log().count('\n'), 3);
    QCOMPARE(run.labels(), QStringList()); // the window was never shown
}

void TestFileChoice::cancelLaterKeepsView() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"box 195 100 209 200", "dump before",
                                                "click newFileButton", "cancel", "dump after"}));
    const auto unchanged = [&](const char* label) {
        QJsonObject state = run.state(label).unlabelled(), window = run.state(label).window();
        window.remove("log");
        window.remove("chosenPath");
        state["window"] = window;
        return state;
    };
    QCOMPARE(unchanged("after"), unchanged("before"));
    QCOMPARE(run.state("after").window()["chosenPath"].toString(), "");
    QCOMPARE(run.state("after").log(), logHeader);
    QCOMPARE(run.log(), logHeader);
}

void TestFileChoice::workAfterCancelGoesOn() {
    DrivenRun run;
    QVERIFY(
        run.playOn(samples::genomeTable(), {"click newFileButton", "cancel", "click newFileButton",
                                            "cancel", "box 195 100 209 200", "dump a"}));
    QCOMPARE(run.state("a").integers("Pos_list"), QList<int>({500, 1500, 2500}));
    QCOMPARE(run.log(), QByteArray(logHeader) +
                            "select chrom B 1 point 202 position 43 start 32 end 43 pixPerX "
                            "4.10256 minX -6\n\nselected chromosome by getManhattan B\n");
}

void TestFileChoice::dialogRestartsLog() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    run.addFile("Pelmark_log.txt", QByteArray(1000, 'x'));
    QVERIFY(run.playTo(0, {"dialog first", "open data.txt", "dump shown", "click newFileButton",
                           "dialog second", "open data.txt", "click exitButton"}));
    QCOMPARE(run.state("first").log(), logHeader);
    QCOMPARE(run.state("shown").log(), QByteArray(logHeader) + "Get GLOBAL\n");
    QCOMPARE(run.state("second").log(), logHeader);
    QCOMPARE(run.log(), logHeader);
}

void TestFileChoice::logThatCannotBeOpened() {
    DrivenRun run;
    QVERIFY(QDir(run.path("")).mkdir("Pelmark_log.txt"));
    QVERIFY(run.playTo(1, {"dialog shown", "cancel"}));
    QCOMPARE(run.labels(), QStringList()); // no dialog either
}

void TestFileChoice::logLostBeforeSecondFile() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    QVERIFY(QDir(run.path("")).mkdir("folder"));
    QVERIFY(run.playTo(1, {"open data.txt", "replace Pelmark_log.txt folder", "click newFileButton",
                           "dialog shown", "cancel"}));
    QCOMPARE(run.labels(), QStringList({"first sight"}));
}

void TestFileChoice::oneChromosomeOpensChromosomeView() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(), {}));
    const State state = run.state("first sight");
    QCOMPARE(state.integer("globaldisplay"), 0);
    QVERIFY(state.isVisible("unzoomButton"));
    QCOMPARE(state.picture("shown"), picture(expectedChromosomePlot(samples::chromosomeView())));
    QVERIFY(state.picture("genomePixmap").startsWith("0x0 "));
}

void TestFileChoice::twoChromosomesOpenGenomeView() {
    DrivenRun run;
    QVERIFY(run.playOn("chr pos pval\n1 100 0.1\n2 200 0.01\n", {}));
    const State state = run.state("first sight");
    QCOMPARE(state.integer("globaldisplay"), 1);
    QVERIFY(!state.isVisible("unzoomButton"));
    QCOMPARE(state.integers("Start_index"), QList<int>({0, 2}));
    QCOMPARE(state.integers("Start_value"), QList<int>({1, 2})); // of the last block's only point
    QCOMPARE(
        state.picture("shown"),
        picture(expectedGenomePlot({{1, 2}, {1, 2}}, genomePlot("data.txt", {"1", "2"}, {1, 2}))));
}

void TestFileChoice::dialogListsDataFiles() {
    DrivenRun run;
    for (const QString name : {"b.csv", "a.txt", "c.tsv", "d.txt.gz", "e"})
        run.addFile(name, samples::genomeTable());
    QVERIFY(
        run.playTo(0, {"listing a.txt b.csv Pelmark_log.txt", "open b.csv", "click exitButton"}));
}

void TestFileChoice::anyContentIsAccepted() {
    DrivenRun run;
    run.addFile("picture.csv", "\x89PNG\r\n\x1a\n");
    QVERIFY(run.playTo(1, {"open picture.csv"}));
    QCOMPARE(run.log(), QByteArray(logHeader) + "Unknown data file delimiter!\n");
}

void TestFileChoice::longNameIsCut() {
    const QString name = "abcdefghijklmnopqrstuvwxyz1234567890.txt";
    DrivenRun run;
    run.addFile(name, samples::genomeTable());
    run.addFile("short.txt", samples::genomeTable());
    QVERIFY(run.playTo(0, {"open " + name, "dump a", "click saveButton", "click newFileButton",
                           "open short.txt", "dump b", "click exitButton"}));
    const QString cut = "abcdefghijklmnopqrstuvwxyz1234";
    QCOMPARE(run.state("a").text("nameLabel"), cut);
    QCOMPARE(run.state("a").bytes("shortname"), cut.toLatin1() + QByteArray(20, '\0'));
    QCOMPARE(bytesUpToZero(run.state("a"), "filename"), QFile::encodeName(run.path(name)));
    QCOMPARE(run.state("a").picture("shown"),
             picture(expectedGenomePlot(samples::genomeView(), samples::genomeLook(cut))));
    QVERIFY(run.exists(cut + ".png"));
    QCOMPARE(run.state("b").bytes("shortname"), "short.txt" + QByteArray(41, '\0'));
    QCOMPARE(run.state("b").bytes("filename").size(), 200);
    QCOMPARE(bytesUpToZero(run.state("b"), "filename"), QFile::encodeName(run.path("short.txt")));
    QVERIFY(run.state("b").bytes("filename").endsWith(QByteArray(50, '\0')));
}

// Byte 30 is the first byte of a two-byte character.
void TestFileChoice::nameCutInsideCharacter() {
    const QString name = QString(29, u'n') + QString::fromUtf8("\xc3\xa4\xc3\xa4.txt");
    DrivenRun run;
    run.addFile(name, samples::genomeTable());
    QVERIFY(run.playTo(0, {"open " + name, "dump a", "click saveButton", "click exitButton"}));
    const QString shown = QString(29, u'n') + QChar(0xfffd);
    QCOMPARE(run.state("a").bytes("shortname").left(31), QByteArray(29, 'n') + '\xc3' + '\0');
    QCOMPARE(run.state("a").text("nameLabel"), shown);
    QVERIFY(run.exists(shown + ".png"));
    QVERIFY(run.state("a").log().endsWith("Get GLOBAL\n"));
}

void TestFileChoice::siblings_data() {
    QTest::addColumn<QStringList>("others");
    QTest::addColumn<QStringList>("listed");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("stepOK");
    const auto row = [](const char* name, const QStringList& others, const QStringList& listed,
                        int index,
                        int stepOK) { QTest::newRow(name) << others << listed << index << stepOK; };
    row("alone", {}, {"m.txt"}, 0, 0);
    row("first of two", {"n.csv"}, {"m.txt", "n.csv"}, 0, 1);
    row("second of two", {"b.csv"}, {"b.csv", "m.txt"}, 1, 1);
    row("others do not count", {"a.tsv", "b.png", "c"}, {"m.txt"}, 0, 0);
    row("by name, not by kind", {"a.txt", "c.csv", "b.txt", "z.csv"},
        {"a.txt", "b.txt", "c.csv", "m.txt", "z.csv"}, 3, 1);
}

void TestFileChoice::siblings() {
    QFETCH(QStringList, others);
    QFETCH(QStringList, listed);
    DrivenRun run;
    QVERIFY(QDir(run.path("")).mkpath("folder/inner.txt")); // not a data file
    QDateTime time = QDateTime::currentDateTime();          // must not affect the order
    for (const QString& name : others + QStringList{"m.txt"}) {
        run.addFile("folder/" + name, samples::genomeTable());
        time = time.addSecs(10);
        QFile file(run.path("folder/" + name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    }
    QVERIFY(run.playTo(0, {"open folder/m.txt", "dump a", "click exitButton"}));
    for (QString& name : listed)
        name = run.path("folder/" + name);
    QCOMPARE(run.state("a").memberTexts("fileList"), listed);
    QTEST(run.state("a").integer("file_index"), "index");
    QTEST(run.state("a").integer("stepOK"), "stepOK");
}

// A file that is not in its own folder's list keeps the last index.
void TestFileChoice::siblingsOfSecondFile() {
    DrivenRun run;
    QVERIFY(QDir(run.path("")).mkdir("many") && QDir(run.path("")).mkdir("few"));
    for (const char* name : {"many/a.txt", "many/b.txt", "many/c.txt", "few/data.tsv", "few/d.txt"})
        run.addFile(name, samples::genomeTable());
    QVERIFY(
        run.playTo(0, {"open many/c.txt", "dump listed", "click newFileButton",
                       "open " + run.path("few/data.tsv"), "dump unlisted", "click exitButton"}));
    QCOMPARE(run.state("listed").integer("file_index"), 2);
    QCOMPARE(run.state("listed").integer("stepOK"), 1);
    QCOMPARE(run.state("unlisted").memberTexts("fileList"), QStringList({run.path("few/d.txt")}));
    QCOMPARE(run.state("unlisted").integer("file_index"), 2);
    QCOMPARE(run.state("unlisted").integer("stepOK"), 0);
}

void TestFileChoice::dialogOpensInLastFolder() {
    DrivenRun run;
    QVERIFY(QDir(run.path("")).mkpath("one/two"));
    run.addFile("one/two/data.txt", samples::genomeTable());
    run.addFile("one/two/other.txt", samples::chromosomeTable());
    QVERIFY(run.playTo(0, {"dialog first", "open one/two/data.txt", "click newFileButton",
                           "dialog second", "cancel", "click newFileButton", "dialog third",
                           "open other.txt", "dump end", "click exitButton"}));
    QCOMPARE(run.state("first").dialog()["directory"].toString(),
             QDir(run.path("")).absolutePath());
    QCOMPARE(run.state("second").dialog()["directory"].toString(), run.path("one/two"));
    QCOMPARE(run.state("second").dialog()["title"].toString(),
             "Welcome to  PELMARK !  Select File");
    QCOMPARE(run.state("third").dialog()["directory"].toString(), run.path("one/two"));
    QCOMPARE(run.state("end").window()["startDir"].toString(), run.path("one/two"));
    QCOMPARE(run.state("end").window()["chosenPath"].toString(), run.path("one/two/other.txt"));
    QCOMPARE(run.state("end").memberTexts("fileList"),
             QStringList({run.path("one/two/data.txt"), run.path("one/two/other.txt")}));
    QVERIFY(!run.exists("one/two/Pelmark_log.txt")); // the log stays in the working folder
}

// Returns a name that makes the whole path `bytes` long.
static QString nameForPathOf(int bytes, const DrivenRun& run) {
    const qsizetype room = bytes - QFile::encodeName(run.path(".txt")).size();
    return QString(room, u'x') + ".txt";
}

// Such a path fills the buffer, with no terminating zero.
void TestFileChoice::pathOfExactly200Bytes() {
    DrivenRun run;
    const QString name = nameForPathOf(200, run);
    run.addFile("other.txt", samples::chromosomeTable());
    run.addFile(name, samples::genomeTable());
    QVERIFY(run.playTo(0, {"open " + name, "dump a", "box 195 100 209 200", "dump b",
                           "click newFileButton", "open other.txt", "click exitButton"}));
    QCOMPARE(run.state("a").bytes("filename"), QFile::encodeName(run.path(name)));
    QCOMPARE(run.state("a").bytes("filename").size(), 200);
    QCOMPARE(run.state("a").texts("Tag"), QStringList({"A", "B", "C"}));
    QCOMPARE(run.state("a").integer("file_index"), 2);
    QCOMPARE(run.state("b").integers("Pos_list"), QList<int>({500, 1500, 2500}));
}

void TestFileChoice::pathBeyond200Bytes() {
    DrivenRun run;
    const QString name = nameForPathOf(201, run);
    run.addFile(name, samples::genomeTable());
    QVERIFY(run.playTo(1, {"open " + name}));
    QCOMPARE(run.log(), QByteArray(logHeader) + "Cannot open data file!\n");
}

// The first 200 bytes of the chosen path name another file in the same folder: the program reads
// that one and finds its index.
void TestFileChoice::pathCutToAnotherFile() {
    DrivenRun run;
    QVERIFY(QDir(run.path("")).mkdir("f"));
    const int room = 200 - static_cast<int>(QFile::encodeName(run.path("f/b.txt")).size());
    const QString shorter = "f/b" + QString(room, u'y') + ".txt";
    run.addFile("f/a.txt", samples::genomeTable());
    run.addFile(shorter, samples::chromosomeTable());
    run.addFile(shorter + "more.txt", samples::genomeTable());
    QCOMPARE(QFile::encodeName(run.path(shorter)).size(), 200);
    QVERIFY(run.playTo(0, {"open " + shorter + "more.txt", "dump a", "click exitButton"}));
    QCOMPARE(run.state("a").texts("Tag"), QStringList({"7"}));
    QCOMPARE(run.state("a").integer("file_index"), 1);
    QCOMPARE(run.state("a").bytes("filename"), QFile::encodeName(run.path(shorter)));
}

QTEST_MAIN(TestFileChoice)
#include "tst_file_choice.moc"
