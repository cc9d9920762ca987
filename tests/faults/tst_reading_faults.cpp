#include "driven_run.h"
#include "machine.h"
#include "samples.h"

#include <QDir>
#include <QFile>
#include <QTest>

// Data files that cannot be read, can only be read in part, or change while the program runs. The
// program ends with its message and a complete log, or shows the points that are left. It never
// takes half a file for a whole one.
class ReadingFaults : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { machine::obeyPermissions(); }
    void unreadable();
    void unreadableAtThePick();
    void folderThatCannotBeEntered();
    void folderAtThePick();
    void failsWhileScanned_data();
    void failsWhileScanned();
    void failsAtThePick();
    void failsWhileReadBySecondFile();
    void everyCutAtThePick();
};

static const QByteArray cannotOpen = "Cannot open data file!\n";
static const QString boxOnB = "box 195 0 209 600"; // over the chromosome B of the genome sample

static void withoutPermissions(const QString& path) {
    QVERIFY(QFile::setPermissions(path, {}));
}

void ReadingFaults::unreadable() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    withoutPermissions(run.path("data.txt"));
    QVERIFY(run.playTo(1, {"open data.txt"}));
    QCOMPARE(run.log(), logHeader + cannotOpen);
}

void ReadingFaults::unreadableAtThePick() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    run.addFile("closed.txt", samples::genomeTable());
    withoutPermissions(run.path("closed.txt"));
    QVERIFY(run.playTo(1, {"open data.txt", "replace data.txt closed.txt", boxOnB}));
    QVERIFY2(run.log().endsWith("\n\n" + cannotOpen), run.log());
}

void ReadingFaults::folderThatCannotBeEntered() {
    DrivenRun run;
    QVERIFY(QDir(run.path("")).mkdir("closed"));
    run.addFile("data.txt", samples::genomeTable());
    run.addFile("closed/data.txt", samples::genomeTable());
    QVERIFY(QFile::link("closed/data.txt", run.path("link.txt")));
    withoutPermissions(run.path("closed"));
    run.play({"open data.txt", "replace data.txt link.txt", boxOnB});
    QVERIFY(QFile::setPermissions(run.path("closed"),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(run.exitStatus(), 1);
    QVERIFY2(run.log().endsWith("\n\n" + cannotOpen), run.log());
}

void ReadingFaults::folderAtThePick() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    QVERIFY(QDir(run.path("")).mkdir("folder"));
    QVERIFY(run.playTo(1, {"open data.txt", "replace data.txt folder", boxOnB}));
    QVERIFY2(run.log().endsWith("\n\n" + cannotOpen), run.log());
}

void ReadingFaults::failsWhileScanned_data() {
    QTest::addColumn<qint64>("goodBytes");
    for (const qint64 bytes : {0, 1, 20, 131072, 200000})
        QTest::addRow("after %lld bytes", bytes) << bytes;
}

// The file's 280,000 bytes are several blocks, with enough whole lines for a plot before each
// fault.
void ReadingFaults::failsWhileScanned() {
    QFETCH(qint64, goodBytes);
    DrivenRun run;
    run.addFile("data.txt", QByteArray("1\t100000\t0.25\n").repeated(20'000));
    const machine::FailingFiles fails("data.txt", "PELMARK_FAULT_READ", goodBytes);
    QVERIFY(run.playTo(1, {"open data.txt"}));
    QCOMPARE(run.log(), logHeader + cannotOpen);
}

// The file is read once without a fault and fails when it is read again.
void ReadingFaults::failsAtThePick() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    run.addFile("failing.txt", samples::genomeTable());
    QVERIFY(QFile::link(run.path("failing.txt"), run.path("link.txt")));
    const machine::FailingFiles fails("failing.txt", "PELMARK_FAULT_READ",
                                      samples::genomeTable().size() - 5);
    QVERIFY(run.playTo(1, {"open data.txt", "replace data.txt link.txt", boxOnB}));
    QVERIFY2(run.log().endsWith("\n" + cannotOpen), run.log());
    QVERIFY(run.log().startsWith(logHeader));
}

void ReadingFaults::failsWhileReadBySecondFile() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    run.addFile("failing.txt", samples::genomeTable());
    const machine::FailingFiles fails("failing.txt", "PELMARK_FAULT_READ", 50);
    QVERIFY(run.playTo(1, {"open data.txt", "click newFileButton", "open failing.txt"}));
    QCOMPARE(run.log(), logHeader + cannotOpen);
}

// The file is cut between the scan and the pick: a message, or the points that are left.
void ReadingFaults::everyCutAtThePick() {
    const QByteArray whole = samples::genomeTable();
    for (qsizetype bytes = 0; bytes <= whole.size(); bytes += 7) {
        DrivenRun run;
        run.addFile("data.txt", whole);
        run.addFile("shorter.txt", whole.left(bytes));
        run.play({"open data.txt", "replace data.txt shorter.txt", boxOnB, "dump picked",
                  "click exitButton"});
        QCOMPARE(run.complaints(), QStringList());
        if (run.exitStatus() == 1) {
            QVERIFY2(run.log().contains("!\n"), run.log());
            continue;
        }
        QCOMPARE(run.exitStatus(), 0);
        const QList<int> loaded = run.state("picked").integers("Pos_list");
        const QList<int> all{500, 1500, 2500};
        QVERIFY(loaded.size() >= 2 && loaded == all.first(loaded.size()));
    }
}

QTEST_GUILESS_MAIN(ReadingFaults)
#include "tst_reading_faults.moc"
