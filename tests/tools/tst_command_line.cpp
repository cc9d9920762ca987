#include "tools_run.h"

#include <QTest>

// What the program answers to command lines, before any file counts.
class CommandLine : public QObject {
    Q_OBJECT

private slots:
    void answers_data();
    void answers();
};

void CommandLine::answers_data() {
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("out");
    QTest::addColumn<QString>("error");

    const auto row = [](const char* name, const QStringList& words, int status, const char* out,
                        const char* error) {
        QTest::newRow(name) << words << status << QString::fromLatin1(out)
                            << QString::fromLatin1(error);
    };
    row("bare call", {}, 2, "", "Usage: pelmark-tools COMMAND");
    row("help", {"--help"}, 0, "  check ", "");
    row("help of a command", {"check", "--help"}, 0, "Exit status: 0 fine", "");
    row("help of prepare", {"prepare", "-h"}, 0, "--chromosome-names HOW", "");
    row("help of plot", {"plot", "-h"}, 0, "--chromosome-column COLUMN", "");
    row("version", {"--version"}, 0, "pelmark-tools 0.1", "");
    row("unknown command", {"chekc", "a"}, 2, "", "there is no command chekc; did you mean check?");
    row("far command", {"telephone"}, 2, "", "there is no command telephone. See");
    row("unknown option", {"check", "--jsn", "a", "b"}, 2, "",
        "there is no option --jsn; did you mean --json?");
    row("unknown option with value", {"prepare", "--positon=BP", "b"}, 2, "",
        "there is no option --positon; did you mean --position?");
    row("no file", {"check"}, 2, "", "no file is named");
    row("option without value", {"prepare", "a", "-o"}, 2, "", "--output lacks its value.");
    row("option given twice", {"prepare", "a", "--p", "A", "--p", "B"}, 2, "",
        "--p can be given only once.");
    row("not a choice", {"prepare", "a", "--p-is", "loud"}, 2, "",
        "--p-is: loud is none of p, neglog10, log10, ln.");
    row("unknown letter", {"prepare", "a", "-x"}, 2, "", "there is no option -x. See");
    row("value of a flag", {"prepare", "a", "-q=3"}, 2, "", "there is no option -=3. See");
    row("missing file", {"check", "none.txt"}, 3, "", "none.txt: cannot be read: No such file");
    row("missing file to prepare", {"prepare", "none.txt", "-o", "o.txt"}, 3, "",
        "none.txt: cannot be read: No such file");
    const char* once = "standard input: can be read only once";
    row("positions from the same input", {"prepare", "-", "--positions", "-"}, 2, "", once);
    row("the same by another name", {"prepare", "-", "--positions", "/dev/stdin"}, 2, "",
        "/dev/stdin: can be read only once");
    row("two scans from one input", {"prepare", "-", "-", "-o", "o.txt"}, 2, "", once);
    row("hits with positions from it", {"hits", "-", "--positions=-"}, 2, "", once);
    row("scan and table from one input", {"drop", "-", "-", "-o", "o.txt"}, 2, "", once);
    row("scan and names from one input", {"keep", "-", "--names", "-", "-o", "o.txt"}, 2, "", once);
    row("folder", {"check", "."}, 3, "", ".: cannot be read: Is a directory");
}

void CommandLine::answers() {
    QFETCH(QStringList, words);
    QFETCH(QString, out);
    QFETCH(QString, error);
    const ToolsRun run;
    const ToolsRun::Result result = run.run(words);
    QTEST(result.status, "status");
    QVERIFY2(result.out.contains(out.toUtf8()), result.out.constData());
    QVERIFY2(result.error.contains(error.toUtf8()), result.error.constData());
    QCOMPARE(result.out.isEmpty(), out.isEmpty());
    QCOMPARE(result.error.isEmpty(), error.isEmpty());
    QCOMPARE(run.files(), QStringList());
}

QTEST_GUILESS_MAIN(CommandLine)
#include "tst_command_line.moc"
