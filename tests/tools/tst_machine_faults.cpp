#include "machine.h"
#include "tools_run.h"

#include <QDir>
#include <QTest>
#include <csignal>
#include <sys/resource.h>

// Disks that fill up, memory that runs out, files that are cut or vanish, a process that is killed:
// at every place.
class MachineFaults : public QObject {
    Q_OBJECT

private slots:
    void outputsThatDoNotFit_data();
    void outputsThatDoNotFit();
    void littleMemory_data();
    void littleMemory();
    void everyCut_data();
    void everyCut();
    void readsThatFail_data();
    void readsThatFail();
    void filesThatVanish_data();
    void filesThatVanish();
    void killed_data();
    void killed();
};

namespace {

constexpr int patience = 60'000; // ms
constexpr rlim_t mebibyte = 1 << 20;

// So many rows, in order or back to front.
QByteArray tableOf(int rows, bool isOrdered, const QByteArray& firstP = "0.25") {
    QByteArray text("chr\tpos\tp\tid\n");
    for (int i = 0; i < rows; ++i) {
        const QByteArray position = QByteArray::number(isOrdered ? i + 1 : rows - i);
        text += "1\t" + position + '\t' + (i == 0 ? firstP : "0.5") + "\trs" + position + '\n';
    }
    return text;
}

// Runs the program with a limit, which it meets as it would a full disk or too little memory.
ToolsRun::Result limited(const ToolsRun& run, const QStringList& words, __rlimit_resource resource,
                         rlim_t limit) {
    QProcess process;
    process.setChildProcessModifier([resource, limit] {
        const rlimit both{limit, limit}, none{0, 0};
        std::signal(SIGXFSZ, SIG_IGN);
        if (setrlimit(resource, &both) != 0 || setrlimit(RLIMIT_CORE, &none) != 0)
            _exit(99);
    });
    run.start(process, words);
    if (!process.waitForFinished(patience))
        qFatal("pelmark-tools does not end");
    const bool isEnd = process.exitStatus() == QProcess::NormalExit;
    return {isEnd ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}

constexpr const char* commandsWithOutput[] = {
    "prepare scan -q -o out.txt",
    "prepare scan --memory 1K -q -o out.txt",
    "drop scan --region 1:1-5 -q -o out.txt",
    "keep scan --region 1:1-5 -q -o out.txt",
    "hits scan --p 0.9 -q -o out.txt",
    "plot scan --size 400x300 --format png -q -o out.txt",
};

// Whether there is a message about the scan, and nothing written.
bool isUnreadable(const ToolsRun& run, const QString& command, const QByteArray& reason) {
    const QStringList before = run.files();
    const ToolsRun::Result result = run.run(command.split(u' '));
    return result.status == 3 && result.error.contains("scan: ") && result.error.contains(reason) &&
           run.files() == before;
}

} // namespace

void MachineFaults::outputsThatDoNotFit_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<QByteArray>("table");
    const QString prepare = "prepare in --memory 1K -o";
    QTest::newRow("in order") << prepare << tableOf(800, true);
    QTest::newRow("in order, written again for a p of 0") << prepare << tableOf(800, true, "0");
    QTest::newRow("sorted through temporary files") << prepare << tableOf(800, false);
    QTest::newRow("drop") << "drop in --region 1:1-5 -o" << tableOf(800, true);
    QTest::newRow("drop, not in order") << "drop in --region 1:1-5 -o" << tableOf(800, false);
    QTest::newRow("keep") << "keep in --region 1:1-600 -o" << tableOf(800, true);
    QTest::newRow("hits") << "hits in --p 0.9 --window 1 -o" << tableOf(800, true);
    QTest::newRow("hits for programs") << "hits in --p 0.9 -o table --json" << tableOf(800, true);
    QTest::newRow("PNG") << "plot in --size 400x300 --format png -o" << tableOf(800, true);
    QTest::newRow("PDF") << "plot in --size 400x300 --format pdf -o" << tableOf(800, true);
}

// Wherever the disk fills up, the old file stays as it is, and the message says so.
void MachineFaults::outputsThatDoNotFit() {
    QFETCH(const QString, words);
    QFETCH(const QByteArray, table);
    const ToolsRun run;
    run.write("in", table);
    const QStringList command = words.split(u' ') + QStringList{"out.txt"};
    QCOMPARE(run.run(command).status, 0);
    const QByteArray whole = run.read("out.txt");
    QFile::remove(run.path("table"));
    int good = 0, bad = 0;
    for (rlim_t limit = 0; good < 3; limit += static_cast<rlim_t>(whole.size() / 16 + 1)) {
        run.write("out.txt", "old");
        const ToolsRun::Result result = limited(run, command, RLIMIT_FSIZE, limit);
        QVERIFY2(result.status == 0 || result.status == 4, result.error.constData());
        (result.status == 0 ? good : bad) += 1;
        QCOMPARE(run.read("out.txt"), result.status == 0 ? whole : QByteArray("old"));
        QCOMPARE(result.error.contains("File too large"), result.status != 0);
        if (result.status == 0)
            QFile::remove(run.path("table"));
        QCOMPARE(run.files(), QStringList({"in", "out.txt"}));
    }
    QVERIFY(bad > 10);
}

void MachineFaults::littleMemory_data() {
    QTest::addColumn<QString>("command");
    for (const char* const command :
         {"prepare in -q -o", "drop in --region 1:1-5 -q -o", "hits in --p 0.9 -q -o",
          "plot in --size 400x300 --format png -q -o",
          "plot in --size 400x300 --scale 16 --format pdf -q -o"})
        QTest::newRow(command) << command;
}

// However little memory there is, no half table comes out, and none stays behind.
void MachineFaults::littleMemory() {
    QFETCH(const QString, command);
    const ToolsRun run;
    run.write("in", tableOf(2000, false));
    const QStringList words = command.split(u' ') + QStringList{"out.txt"};
    QCOMPARE(run.run(words).status, 0);
    const QByteArray whole = run.read("out.txt");
    bool isTold = false;
    for (rlim_t size = 16; size <= 256; size += 8) {
        run.write("out.txt", "old");
        const ToolsRun::Result result = limited(run, words, RLIMIT_AS, size * mebibyte);
        // The sanitizers ask for more than that before the program starts.
        isTold |= result.error.contains("not enough memory") || result.error.contains("Sanitizer");
        QCOMPARE(run.read("out.txt"), result.status == 0 ? whole : QByteArray("old"));
        QCOMPARE(QDir(run.path(".")).entryList(QDir::Files), QStringList({"in", "out.txt"}));
    }
    QVERIFY(isTold);
}

void MachineFaults::everyCut_data() {
    QTest::addColumn<QString>("program");
    QTest::newRow("gzip") << "gzip";
    QTest::newRow("bgzip") << "bgzip";
    QTest::newRow("zstd") << "zstd";
}

// A packed file that is cut at any byte is never taken for a shorter one.
void MachineFaults::everyCut() {
    QFETCH(const QString, program);
    const ToolsRun run;
    run.write("in", tableOf(60, true));
    QProcess packer;
    packer.setWorkingDirectory(run.path("."));
    packer.start(program, {"-c", "in"});
    QVERIFY2(packer.waitForFinished(patience) && packer.exitCode() == 0, qPrintable(program));
    const QByteArray packed = packer.readAllStandardOutput();
    run.write("packed", packed);
    QCOMPARE(run.run({"prepare", "packed", "-o", "whole.txt", "-q"}).status, 0);
    for (qsizetype size = 20; size < packed.size(); size += 3) {
        run.write("cut", packed.first(size));
        QStringList words{size % 2 == 0 ? "hits" : "prepare", "cut", "-o", "out.txt", "-q"};
        if (size % 4 == 1)
            words = {"drop", "cut", "-o", "out.txt", "-q", "--region", "1:1-5"};
        const ToolsRun::Result result = run.run(words);
        QVERIFY2(result.status == 3, qPrintable(QStringLiteral("cut at %1").arg(size)));
        QVERIFY(!run.files().contains("out.txt"));
    }
}

void MachineFaults::readsThatFail_data() {
    QTest::addColumn<QString>("command");
    QTest::newRow("check") << "check scan";
    QTest::newRow("positions") << "prepare names --positions scan -o out.txt";
    for (const char* const command : commandsWithOutput)
        QTest::newRow(command) << command;
}

// Wherever a disk fails, the rows before it are not taken for the whole file.
void MachineFaults::readsThatFail() {
    QFETCH(const QString, command);
    const ToolsRun run;
    const QByteArray table = tableOf(800, true);
    run.write("scan", table);
    run.write("names", "id\tp\nrs1\t0.5\n");
    for (qint64 limit = 0; limit < table.size(); limit += table.size() / 12) {
        const machine::FailingFiles failing(run.path("scan"), "PELMARK_FAULT_READ", limit);
        QVERIFY2(isUnreadable(run, command, "Input/output error"), QByteArray::number(limit));
    }
}

void MachineFaults::filesThatVanish_data() {
    readsThatFail_data();
}

// Some commands read a file twice or more.
void MachineFaults::filesThatVanish() {
    QFETCH(const QString, command);
    const ToolsRun run;
    run.write("scan", tableOf(800, false));
    run.write("names", "id\tp\nrs1\t0.5\n");
    for (qint64 times = 0;; ++times) {
        const machine::FailingFiles failing(run.path("scan"), "PELMARK_FAULT_OPEN", times);
        if (times > 0 && run.run(command.split(u' ')).status < 3)
            return;
        QVERIFY2(isUnreadable(run, command, "No such file"), QByteArray::number(times));
    }
}

void MachineFaults::killed_data() {
    QTest::addColumn<QString>("command");
    for (const char* const command : commandsWithOutput)
        QTest::newRow(command) << command;
}

// Before each call that writes the output or gives it its name.
void MachineFaults::killed() {
    QFETCH(const QString, command);
    const ToolsRun run;
    run.write("scan", tableOf(800, false));
    QCOMPARE(run.run(command.split(u' ')).status, 0);
    const QByteArray whole = run.read("out.txt");
    int deaths = 0;
    for (ToolsRun::Result result; result.status != 0; ++deaths) {
        run.write("out.txt", "old");
        const machine::FailingFiles failing(run.path("out.txt"), "PELMARK_FAULT_CALL", deaths);
        result = run.run(command.split(u' '));
        QVERIFY2(result.status <= 0, result.error.constData());
        QVERIFY(run.read("out.txt") == (result.status == 0 ? whole : QByteArray("old")));
    }
    QVERIFY(deaths > 2);
}

QTEST_GUILESS_MAIN(MachineFaults)
#include "tst_machine_faults.moc"
