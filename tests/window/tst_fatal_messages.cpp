#include "driven_run.h"
#include "samples.h"

#include <QDir>
#include <QFile>
#include <QTest>

// Every fatal error ends the program with exit status 1 and leaves the complete log on disk.
class TestFatalMessages : public QObject {
    Q_OBJECT

private slots:
    void atOpening_data();
    void atOpening();
    void atPick_data();
    void atPick();
    void otherChromosomesAreNotRead();
    void oneMarkerChromosome();
    void secondFile();
    void tableThatCannotBeOpened();
    void deviceIsFull();
    void diskIsFull();
};

static const char* const ofScan = "Illegal data range in getManhattan0!\n";
static const char* const ofColumns = "Incorrect data columns!\n";
static const char* const ofValue = "Non-numeric p-value detected!\n";
static const char* const ofPosition = "Non-integer position value detected!\n";

void TestFatalMessages::atOpening_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char* name, const char* content, const char* message) {
        QTest::newRow(name) << QByteArray(content) << QByteArray(message);
    };
    row("no delimiter", "chr;pos;pval\n1;2;0.1\n", "Unknown data file delimiter!\n");
    row("two columns", "chr pos\n1 2 0.1\n", "Data file contains < 3 columns!\n");
    row("no position title", "CHR\tBP\tP\n1\t2\t0.1\n", ofColumns);
    row("no p-value title", "chr\tpos\tprob\n1\t2\t0.1\n", ofColumns);
    row("no chromosome title", "a pos pval\n1 2 0.1\n", ofColumns);
    row("label where a header is", "chr1 12345 0.001\nchr1 12346 0.01\n", ofColumns);
    row("short line", "chr pos pval\n1 2 0.1\n1 3\n", ofColumns);
    row("line of a space", "chr pos pval\n1 2 0.1\n \n", ofColumns);
    row("lower-case na", "chr pos pval\n1 2 0.1\n1 3 na\n", ofValue);
    row("empty p-value", "chr\tpos\tpval\n1\t2\t0.1\n1\t3\t\n", ofValue);
    row("p-value before position", "chr pos pval\n1 2 0.1\n1 x y\n", ofValue);
    row("fraction as position", "chr pos pval\n1 2 0.1\n1 12345.0 0.1\n", ofPosition);
    row("exponent as position", "chr pos pval\n1 2 0.1\n1 1.5e6 0.1\n", ofPosition);
    row("position too large", "chr pos pval\n1 2 0.1\n1 2147483648 0.1\n", ofPosition);
    row("empty file", "", ofScan);
    row("header alone", "chr pos pval\n", ofScan);
    row("one point", "chr pos pval\n1 2 0.1\n1 3 NA\n1 4 0\n", ofScan);
    row("no point", "chr pos pval\n1 3 NA\n1 4 0.0\n", ofScan);
}

void TestFatalMessages::atOpening() {
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, message);
    DrivenRun run;
    run.addFile("data.txt", content);
    QVERIFY(run.playTo(1, {"open data.txt"}));
    QCOMPARE(run.log(), logHeader + message);
    QCOMPARE(run.labels(), QStringList()); // the window was never shown
}

void TestFatalMessages::atPick_data() {
    QTest::addColumn<QByteArray>("changed"); // the file's contents at the time of the pick
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char* name, const QByteArray& changed, const QByteArray& message) {
        QTest::newRow(name) << changed << message;
    };
    const QByteArray label = "selected chromosome by getManhattan B\n";
    const QByteArray tooFew = label + "Illegal data range in getManhattan!\n";
    const QByteArray header = "chr\tpos\tpval\n";
    row("no file", "", "Cannot open data file!\n");
    row("no delimiter", "x\n", "Unknown data file delimiter!\n");
    row("two columns", "chr\tpos\n", "Data file contains < 3 columns!\n");
    row("no position title", "CHR\tBP\tP\n", ofColumns);
    row("short line", header + "B\t2\n", label + ofColumns);
    row("p-value", header + "B\t2\t0.1\nB\t3\tx\n", label + ofValue);
    row("position", header + "B\t2\t0.1\nB\tx\t0.1\n", label + ofPosition);
    row("label is gone", header + "A\t2\t0.1\nA\t3\t0.1\n", tooFew);
    row("one point left", header + "B\t2\t0.1\nB\t3\tNA\n", tooFew);
}

void TestFatalMessages::atPick() {
    QFETCH(QByteArray, changed);
    QFETCH(QByteArray, message);
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    run.addFile("changed.txt", changed);
    const QString replace = changed.isEmpty() ? "replace data.txt" : "replace data.txt changed.txt";
    QVERIFY(run.playTo(1, {"open data.txt", replace, "box 195 0 209 600"}));
    QCOMPARE(run.log(), QByteArray(logHeader) +
                            "Get GLOBAL\nselect chrom B 1 point 202 position 43 start 32 end 43 "
                            "pixPerX 4.10256 minX -6\n\n" +
                            message);
}

// Values on chromosomes before the picked one are not parsed, and nothing after it is read.
void TestFatalMessages::otherChromosomesAreNotRead() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    run.addFile("changed.txt",
                "chr\tpos\tpval\nA\tx\ty\nB\t7\t0.1\nB\t9\t0.2\nC\t1\t0.1\nB\t1\tx\n");
    QVERIFY(run.playTo(0, {"open data.txt", "replace data.txt changed.txt", "box 195 0 209 600",
                           "dump a", "click exitButton"}));
    QCOMPARE(run.state("a").integers("Pos_list"), QList<int>({7, 9}));
}

void TestFatalMessages::oneMarkerChromosome() {
    DrivenRun run;
    run.addFile("data.txt",
                samples::table({{"1", 100, "0.1"}, {"2", 200, "0.2"}, {"2", 300, "0.3"}}));
    QVERIFY(run.playTo(1, {"open data.txt", "box 1 1 3 3"}));
    QVERIFY2(run.log().endsWith("selected chromosome by getManhattan 1\n"
                                "Illegal data range in getManhattan!\n"),
             run.log());
}

// The second file's log holds nothing from the first.
void TestFatalMessages::secondFile() {
    DrivenRun run;
    run.addFile("good.txt", samples::genomeTable());
    run.addFile("bad.txt", "chr pos pval\n1 2 x\n");
    QVERIFY(run.playTo(1, {"open good.txt", "click newFileButton", "open bad.txt"}));
    QCOMPARE(run.log(), QByteArray(logHeader) + ofValue);
}

void TestFatalMessages::tableThatCannotBeOpened() {
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    QVERIFY(QDir(run.path("")).mkdir("taken.txt"));
    for (const QString name : {"no/such/folder", "taken"}) {
        QVERIFY(run.playTo(1, {"open data.txt", "click saveButton", "name " + name}));
        QCOMPARE(run.log(), QByteArray(logHeader) + "selected chromosome by getManhattan 7\n"
                                                    "Could not generate outpout file!");
        QVERIFY(!run.exists(name + ".png"));
    }
}

void TestFatalMessages::deviceIsFull() {
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    QVERIFY(QFile::link("/dev/full", run.path("full.txt")));
    QVERIFY(run.playTo(1, {"open data.txt", "click saveRemoveButton", "name full"}));
    QVERIFY2(run.log().endsWith("\nCould not generate outpout file!"), run.log());
}

// The file that already had that name is left intact.
void TestFatalMessages::diskIsFull() {
    QList<samples::Marker> markers;
    for (int i = 0; i < 1000; ++i)
        markers.append({"1", 100000 + 10 * i, "0.01"});
    markers.append({"1", 200000, "0.1"});
    DrivenRun run;
    run.addFile("data.txt", samples::table(markers));
    run.addFile("old.txt", "kept\n");
    QVERIFY(
        run.playTo(1, {"open data.txt", "limitfiles 4096", "click saveRemoveButton", "name old"}));
    QVERIFY2(run.log().endsWith("\nCould not generate outpout file!"), run.log());
    QCOMPARE(run.content("old.txt"), "kept\n");
    QCOMPARE(QDir(run.path("")).entryList(QDir::Files | QDir::Hidden),
             QStringList({"data.txt", "old.txt", "Pelmark_log.txt"}));
}

QTEST_MAIN(TestFatalMessages)
#include "tst_fatal_messages.moc"
