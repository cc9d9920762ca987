#include "tools_run.h"

#include <QDir>
#include <QTest>
#include <csignal>
#include <sys/resource.h>

// Disks that fill up, memory that runs out and files that are cut, at every size.
class MachineFaults : public QObject {
    Q_OBJECT

private slots:
    void outputsThatDoNotFit_data();
    void outputsThatDoNotFit();
    void littleMemory_data();
    void littleMemory();
    void everyCut_data();
    void everyCut();
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

QTEST_GUILESS_MAIN(MachineFaults)
#include "tst_machine_faults.moc"
