#include "tools_run.h"

#include <QFile>
#include <QJsonDocument>
#include <QTest>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Where the output goes, and what is left of it when something fails.
class Outputs : public QObject {
    Q_OBJECT

private slots:
    void writesTheSameEverywhere();
    void replacesAFileAndKeepsItsMode();
    void followsALink();
    void writesIntoAReadOnlyFolder();
    void writesADevice();
    void writesIntoOpenDescriptors_data();
    void writesIntoOpenDescriptors();
    void refusesAnInput_data();
    void refusesAnInput();
    void refusesATerminal_data();
    void refusesATerminal();
    void refusesOneFileForTwoOutputs();
    void cannotWrite_data();
    void cannotWrite();
    void leavesTheOldFileAtARefusal();
    void endsQuietlyOnABrokenPipe();
    void leavesNothingAtASignal_data();
    void leavesNothingAtASignal();
};

namespace {

constexpr int patience = 60'000; // ms

constexpr const char* table = "CHR\tBP\tP\n1\t10\t0.5\n1\t20\t0.1\n";
constexpr const char* prepared =
    "Chr\tPosition\tP\t-log10(P)\n1\t10\t0.5\t0.30103\n1\t20\t0.1\t1\n";

} // namespace

void Outputs::writesTheSameEverywhere() {
    const ToolsRun run;
    run.write("in", table);
    const ToolsRun::Result toPipe = run.run({"prepare", "in"});
    QCOMPARE(toPipe.status, 0);
    QCOMPARE(toPipe.out, QByteArray(prepared));
    QCOMPARE(run.run({"prepare", "-"}, table).out, QByteArray(prepared));
    QCOMPARE(run.run({"prepare", "in", "-o", "out.txt"}).out, QByteArray());
    QCOMPARE(run.read("out.txt"), QByteArray(prepared));
    QCOMPARE(run.files(), QStringList({"in", "out.txt"}));
}

void Outputs::replacesAFileAndKeepsItsMode() {
    const ToolsRun run;
    run.write("in", table);
    run.write("out.txt", "old");
    QVERIFY(QFile::setPermissions(run.path("out.txt"), QFile::ReadOwner | QFile::WriteOwner));
    QCOMPARE(run.run({"prepare", "in", "-o", "out.txt"}).status, 0);
    QCOMPARE(run.read("out.txt"), QByteArray(prepared));
    struct stat status {};
    QCOMPARE(stat(run.path("out.txt").toLocal8Bit().constData(), &status), 0);
    QCOMPARE(status.st_mode & 0777U, 0600U);
}

void Outputs::followsALink() {
    const ToolsRun run;
    run.write("in", table);
    run.write("real.txt", "old");
    QVERIFY(QFile::link(run.path("real.txt"), run.path("link.txt")));
    QCOMPARE(run.run({"prepare", "in", "-o", "link.txt"}).status, 0);
    QVERIFY(QFileInfo(run.path("link.txt")).isSymLink());
    QCOMPARE(run.read("real.txt"), QByteArray(prepared));
}

// A file there can be written, but none beside it. The superuser, who can write everywhere, runs
// the program as somebody else, with a folder of its own for temporary files.
void Outputs::writesIntoAReadOnlyFolder() {
    const ToolsRun run;
    run.write("in", table);
    QVERIFY(QDir(run.path(".")).mkdir("folder"));
    QVERIFY(QDir(run.path(".")).mkdir("temporary"));
    run.write("folder/out.txt", "old");
    const auto setMode = [&run](const char* name, mode_t mode) {
        QCOMPARE(chmod(run.path(name).toLocal8Bit().constData(), mode), 0);
    };
    setMode(".", 0755);
    setMode("in", 0644);
    setMode("folder/out.txt", 0666);
    setMode("folder", 0555);
    setMode("temporary", 01777);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", run.path("temporary"));
    process.setProcessEnvironment(environment);
    process.setChildProcessModifier([] {
        constexpr uid_t nobody = 65534;
        if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(99);
    });
    run.start(process, {"prepare", "in", "-o", "folder/out.txt"});
    QVERIFY(process.waitForFinished(patience));
    setMode("folder", 0755);
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
    QCOMPARE(run.read("folder/out.txt"), QByteArray(prepared));
}

void Outputs::writesADevice() {
    const ToolsRun run;
    run.write("in", table);
    QCOMPARE(run.run({"prepare", "in", "-o", "/dev/stdout"}).out, QByteArray(prepared));
    QCOMPARE(run.run({"prepare", "in", "-o", "/dev/null"}).status, 0);
    QVERIFY(!QFileInfo("/dev/null").isFile());
}

void Outputs::writesIntoOpenDescriptors_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("redirection");
    QTest::newRow("standard output") << "/dev/stdout"
                                     << ">> log";
    QTest::newRow("a descriptor") << "/dev/fd/3"
                                  << "3>> log";
    QTest::newRow("a link to one") << "link"
                                   << ">> log";
}

// What they are redirected to goes on after what it holds, and stays the same file.
void Outputs::writesIntoOpenDescriptors() {
    QFETCH(QString, path);
    QFETCH(QString, redirection);
    const ToolsRun run;
    run.write("in", table + QByteArray("1\t30\tNA\n"));
    run.write("log", "before\n");
    QVERIFY(QFile::link("/dev/stdout", run.path("link")));
    QCOMPARE(
        link(run.path("log").toLocal8Bit().constData(), run.path("same").toLocal8Bit().constData()),
        0);
    QProcess shell;
    shell.setWorkingDirectory(run.path("."));
    shell.start("sh", {"-c", "\"$0\" prepare in -o out.txt --dropped " + path + ' ' + redirection,
                       ToolsRun::program()});
    QVERIFY(shell.waitForFinished(patience));
    QVERIFY2(shell.exitCode() == 0, shell.readAllStandardError().constData());
    QCOMPARE(run.read("same"), QByteArray("before\np-missing\t4\t1\t30\tNA\n"));
    QCOMPARE(run.read("out.txt"), QByteArray(prepared));
}

void Outputs::refusesAnInput_data() {
    QTest::addColumn<QStringList>("words");
    QTest::newRow("same name") << QStringList{"prepare", "in", "-o", "in"};
    QTest::newRow("other name") << QStringList{"prepare", "in", "-o", "./in"};
    QTest::newRow("hard link") << QStringList{"prepare", "in", "-o", "hard"};
    QTest::newRow("symbolic link") << QStringList{"prepare", "in", "-o", "soft"};
    QTest::newRow("second input") << QStringList{"prepare", "other", "in", "-o", "in"};
    QTest::newRow("dropped rows") << QStringList{"prepare", "in", "-o", "o.txt", "--dropped", "in"};
    QTest::newRow("report") << QStringList{"prepare", "in", "-o", "o.txt", "--json", "in"};
    QTest::newRow("positions") << QStringList{"prepare", "other", "--positions", "in", "-o", "in"};
    QTest::newRow("report of check") << QStringList{"check", "in", "--json", "in"};
}

void Outputs::refusesAnInput() {
    QFETCH(QStringList, words);
    const ToolsRun run;
    run.write("in", table);
    run.write("other", table);
    QCOMPARE(
        link(run.path("in").toLocal8Bit().constData(), run.path("hard").toLocal8Bit().constData()),
        0);
    QVERIFY(QFile::link(run.path("in"), run.path("soft")));
    const QStringList before = run.files();
    const ToolsRun::Result result = run.run(words);
    QCOMPARE(result.status, 2);
    QVERIFY2(result.error.contains("is an input too"), result.error.constData());
    QCOMPARE(run.read("in"), QByteArray(table));
    QCOMPARE(run.files(), before);
}

void Outputs::refusesATerminal_data() {
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QByteArray>("hint");
    QTest::newRow("table") << QStringList{"prepare", "in"} << QByteArray("-o OUT");
    QTest::newRow("report") << QStringList{"prepare", "in", "-o", "o.txt", "--json", "-"}
                            << QByteArray("Name a file with --json FILE");
    QTest::newRow("report of check")
        << QStringList{"check", "in", "--json", "-"} << QByteArray("Name a file with --json FILE");
}

void Outputs::refusesATerminal() {
    QFETCH(QStringList, words);
    QFETCH(QByteArray, hint);
    const ToolsRun run;
    run.write("in", table);
    const ToolsRun::Result result = run.runOnTerminal(words);
    QCOMPARE(result.status, 2);
    QVERIFY2(result.error.contains(hint), result.error.constData());
    QCOMPARE(run.files(), QStringList{"in"});
}

void Outputs::refusesOneFileForTwoOutputs() {
    const ToolsRun run;
    run.write("in", table);
    QCOMPARE(run.run({"prepare", "in", "-o", "o.txt", "--json", "o.txt"}).status, 2);
    QCOMPARE(run.run({"prepare", "in", "-o", "o.txt", "--json", "./o.txt"}).status, 2);
    QCOMPARE(run.run({"prepare", "in", "--json", "-"}).status, 2);
    QCOMPARE(run.run({"prepare", "in", "--dropped", "/dev/stdout"}).status, 2);
    QCOMPARE(run.files(), QStringList{"in"});
    QCOMPARE(run.run({"prepare", "in", "-o", "/dev/null", "--json", "/dev/null"}).status, 0);
}

void Outputs::cannotWrite_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << "none/out.txt";
    QTest::newRow("a folder") << "folder";
    QTest::newRow("full device") << "/dev/full";
    QTest::newRow("name too long") << QString(300, u'x');
}

void Outputs::cannotWrite() {
    QFETCH(QString, name);
    const ToolsRun run;
    run.write("in", table + QByteArray("1\t30\tNA\n")); // so that there are dropped lines
    QVERIFY(QDir(run.path(".")).mkdir("folder"));
    for (const QString option : {"-o", "--dropped", "--json"}) {
        QStringList words{"prepare", "in", option, name};
        if (option != "-o")
            words += {"-o", "o.txt"};
        const ToolsRun::Result result = run.run(words);
        QCOMPARE(result.status, 4);
        QVERIFY2(result.error.contains(name.toUtf8() + ": "), result.error.constData());
        QCOMPARE(run.files(), QStringList({"folder", "in"}));
    }
}

void Outputs::leavesTheOldFileAtARefusal() {
    const ToolsRun run;
    run.write("in", "CHR\tBP\tQ\n1\t10\t0.5\n");
    run.write("out.txt", "old");
    const ToolsRun::Result result = run.run({"prepare", "in", "-o", "out.txt", "--json", "r.json"});
    QCOMPARE(result.status, 5);
    QCOMPARE(run.read("out.txt"), QByteArray("old"));
    QCOMPARE(run.files(), QStringList({"in", "out.txt"}));
}

void Outputs::endsQuietlyOnABrokenPipe() {
    const ToolsRun run;
    run.write("in", table);
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    close(ends[0]);
    QProcess process;
    process.setChildProcessModifier([&ends] {
        dup2(ends[1], STDOUT_FILENO);
        std::signal(SIGPIPE, SIG_DFL);
    });
    run.start(process, {"prepare", "in"});
    QVERIFY(process.waitForFinished(patience));
    close(ends[1]);
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QVERIFY(process.exitStatus() == QProcess::CrashExit && process.exitCode() == SIGPIPE);
}

void Outputs::leavesNothingAtASignal_data() {
    QTest::addColumn<int>("signal");
    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("termination") << SIGTERM;
    QTest::newRow("hang-up") << SIGHUP;
}

// The report waits for a reader of its pipe while the table waits for the report.
void Outputs::leavesNothingAtASignal() {
    QFETCH(int, signal);
    const ToolsRun run;
    run.write("in", table);
    QCOMPARE(mkfifo(run.path("report").toLocal8Bit().constData(), 0600), 0);
    QProcess process;
    process.setChildProcessModifier([] {
        for (const int each : {SIGINT, SIGTERM, SIGHUP})
            std::signal(each, SIG_DFL);
    });
    run.start(process, {"prepare", "in", "-o", "out.txt", "--json", "report"});
    QTRY_COMPARE_WITH_TIMEOUT(run.files().size(), 3, patience);
    QVERIFY(run.files().filter(QRegularExpression("^out\\.txt\\.")).size() == 1);
    kill(static_cast<pid_t>(process.processId()), signal);
    QVERIFY(process.waitForFinished(patience));
    QVERIFY(process.exitStatus() == QProcess::CrashExit && process.exitCode() == signal);
    QCOMPARE(run.files(), QStringList({"in", "report"}));
}

QTEST_GUILESS_MAIN(Outputs)
#include "tst_outputs.moc"
