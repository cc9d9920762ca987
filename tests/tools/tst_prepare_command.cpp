#include "tools_run.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// How `prepare` takes its options, and what it reports.
class PrepareCommand : public QObject {
    Q_OBJECT

private slots:
    void takesOptions_data();
    void takesOptions();
    void refuses_data();
    void refuses();
    void printsACommandThatDecides();
    void takesPositionsFromATableInstead_data();
    void takesPositionsFromATableInstead();
    void reports();
    void reportsNamesAsTheyStand();
    void reportsColumnsWithoutTitles();
    void reportsForPrograms();
    void writesDroppedLines();
    void warnsOfANameThatTheDialogHides();
    void isQuiet();
    void joinsFiles();
};

namespace {

constexpr const char* header = "Chr\tPosition\tP\t-log10(P)";

} // namespace

void PrepareCommand::takesOptions_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("rows"); // after the titles

    const auto row = [](const char* options, const char* file, const char* rows) {
        QTest::newRow(options) << QByteArray(file) << QString::fromLatin1(options).split(u' ')
                               << QByteArray(rows);
    };
    row("--chromosome a --position b --p c", "a\tb\tc\n1\t10\t0.5\n", "1\t10\t0.5\t0.30103\n");
    row("--p 3", "chr\tpos\tP_EUR\tP_AFR\n1\t10\t0.5\t0.1\n", "1\t10\t0.5\t0.30103\n");
    row("--p=P_AFR", "chr\tpos\tP_EUR\tP_AFR\n1\t10\t0.5\t0.1\n", "1\t10\t0.1\t1\n");
    row("--no-header --chromosome 2 --position 3 --p 1", "0.5\t1\t10\n0.1\t1\t20\n",
        "1\t10\t0.5\t0.30103\n1\t20\t0.1\t1\n");
    row("--p-is neglog10 --p P", "chr\tpos\tP\n1\t10\t1\n1\t20\t2\n",
        "1\t10\t0.10000000000000001\t1\n1\t20\t0.01\t2\n");
    row("--chromosome-value 7", "pos\tP\n10\t0.1\n", "7\t10\t0.1\t1\n");
    row("--where pop=EUR", "chr\tpos\tP\tpop\n1\t10\t0.1\tEUR\n1\t20\t0.1\tAFR\n",
        "1\t10\t0.1\t1\n");
    row("--zero drop", "chr\tpos\tP\n1\t10\t0.1\n1\t20\t0\n", "1\t10\t0.1\t1\n");
    row("--zero smallest", "chr\tpos\tP\n1\t10\t0.1\n1\t20\t0\n", "1\t10\t0.1\t1\n1\t20\t0.1\t1\n");
    row("--min-markers 2", "chr\tpos\tP\n1\t10\t0.1\n1\t20\t0.1\n2\t5\t0.1\n",
        "1\t10\t0.1\t1\n1\t20\t0.1\t1\n");
    row("--chromosome-names chr", "chr\tpos\tP\n1\t10\t0.1\n", "chr1\t10\t0.1\t1\n");
    row("--test DOMDEV", "chr\tpos\tTEST\tP\n1\t10\tADD\t0.5\n1\t10\tDOMDEV\t0.1\n",
        "1\t10\t0.1\t1\n");
    row("--test-name DOMDEV", "chr\tpos\tTEST\tP\n1\t10\tADD\t0.5\n1\t10\tDOMDEV\t0.1\n",
        "1\t10\t0.1\t1\n");
    const char* const prepared = "Chr\tPosition\tP\t-log10(P)\tTEST\tZ\n"
                                 "1\t10\t0.1\t1\tADD\t0\n1\t10\t0.2\t0.69897\tDOM\t0\n";
    row("--test DOM", prepared, "1\t10\t0.2\t0.69897\n");
    row("--test-name ADD", prepared, "1\t10\t0.1\t1\n");
    row("--p-from z --test ADD", prepared, "1\t10\t1\t0\n");
    row("--memory 512M", "chr\tpos\tP\n2\t10\t0.1\n1\t10\t0.1\n", "1\t10\t0.1\t1\n2\t10\t0.1\t1\n");
}

void PrepareCommand::takesOptions() {
    QFETCH(QByteArray, file);
    QFETCH(QStringList, options);
    QFETCH(QByteArray, rows);
    const ToolsRun run;
    run.write("in", file);
    const ToolsRun::Result result = run.run(QStringList{"prepare", "in"} + options);
    QVERIFY2(result.status == 0, result.error.constData());
    QCOMPARE(result.out, QByteArray(header) + '\n' + rows);
}

void PrepareCommand::refuses_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("message");

    const auto row = [](const char* name, const QByteArray& file, const QStringList& options,
                        int status, const char* message) {
        QTest::newRow(name) << file << options << status << QByteArray(message);
    };
    const QByteArray good = "chr\tpos\tP\n1\t10\t0.1\n";
    row("several p", "chr\tpos\tP_EUR\tP_AFR\n1\t10\t0.5\t0.1\n", {}, 5,
        "    pelmark-tools prepare in --p P_AFR\n");
    row("two spaces in a title", "chr\tpos\tP  a\tP  b\n1\t10\t0.5\t0.1\n", {}, 5,
        "    pelmark-tools prepare in --p 'P  b'\n");
    row("unknown column", good, {"--p", "PVAL"}, 2, "    pelmark-tools prepare in --p P\n");
    row("no chromosome", "pos\tP\n10\t0.1\n", {}, 5, "--chromosome");
    row("a PDF", "%PDF-1.4\n1 0 obj\n", {}, 5, "PDF");
    row("p of 0", "chr\tpos\tP\n1\t10\t0.1\n1\t20\t0\n", {"--zero", "fail"}, 5, "--zero drop");
    row("cut gzip", QByteArray::fromHex("1f8b08000000000000034bce28"), {}, 3, "in: ");
    row("where without value", good, {"--where", "pop"}, 2, "--where pop: write COLUMN=VALUE");
    row("source", good, {"--p-from", "odds"}, 2, "--p-from odds: write z or beta,se");
    row("source and p", good, {"--p-from", "z", "--p", "P"}, 2, "cannot be combined");
    row("z without its source", good, {"--z", "P"}, 2, "--z is for --p-from z. Give both");
    row("z for another source", good, {"--p-from", "beta,se", "--z", "P"}, 2, "--z is for");
    row("source without column", good, {"--p-from", "z"}, 5,
        "    pelmark-tools prepare in --p-from z --z COLUMN\n");
    row("source of texts", "chr\tpos\tid\n1\t10\ta\n",
        {"--p-from", "beta,se", "--beta", "id", "--se=id"}, 5,
        "    pelmark-tools prepare in --p-from beta,se --beta COLUMN --se COLUMN\n");
    row("sample of no VCF", good, {"--sample", "P"}, 2, "The table is no VCF");
    row("unknown column of where", good, {"--where", "pop=EUR"}, 2, "choose from: pos, P, chr\n");
    row("positions missing where named", "id\tchr\tpos\tP\na\t1\tNA\t0.1\n", {"--position", "pos"},
        5, "    pelmark-tools prepare in --positions FILE\n");
    row("no chromosomes and positions", "chr\tpos\tP\n1\tNA\t0.1\n", {"--position", "pos"}, 5,
        "    pelmark-tools prepare in --chromosome COLUMN --position COLUMN\n");
    row("no positions", good, {"--positions", "in"}, 5,
        "pelmark-tools: in does not say chromosome");
    row("no titles, no columns", "1\t10\t0.1\n", {"--no-header", "--p", "3"}, 5,
        "    pelmark-tools prepare in --no-header --chromosome N --position N --p N\n");
    row("no test", good, {"--test-name", "DOM"}, 2, "No column says which test a line is of");
    row("the same file twice", good, {"./in"}, 2, "./in: is given twice");
    row("memory", good, {"--memory", "lots"}, 2, "--memory lots: write a size");
    row("markers", good, {"--min-markers", "0"}, 2, "--min-markers 0: write a whole number");
}

void PrepareCommand::refuses() {
    QFETCH(QByteArray, file);
    QFETCH(QStringList, options);
    QFETCH(QByteArray, message);
    const ToolsRun run;
    run.write("in", file);
    const ToolsRun::Result result = run.run(QStringList{"prepare", "in"} + options);
    QTEST(result.status, "status");
    QVERIFY2(result.error.contains(message), result.error.constData());
    QVERIFY(result.error.startsWith("pelmark-tools: "));
    QCOMPARE(result.out, QByteArray());
}

void PrepareCommand::takesPositionsFromATableInstead_data() {
    QTest::addColumn<QByteArray>("positions"); // of the file itself
    QTest::addColumn<QByteArray>("taken");

    QTest::newRow("genetic map") << QByteArray("0.5 1.25") << QByteArray("700 800");
    QTest::newRow("missing") << QByteArray("NA .") << QByteArray("700 800");
    QTest::newRow("zeros") << QByteArray("0 0") << QByteArray("700 800");
    QTest::newRow("its own") << QByteArray("10 NA") << QByteArray("10");
}

// Also where the columns have the titles of positions.
void PrepareCommand::takesPositionsFromATableInstead() {
    QFETCH(QByteArray, positions);
    QFETCH(QByteArray, taken);
    const ToolsRun run;
    const QByteArrayList own = positions.split(' ');
    run.write("in", "SNP\tCHR\tPOS\tP\na\t1\t" + own[0] + "\t0.1\nb\t1\t" + own[1] + "\t0.1\n");
    run.write("map", "1\ta\t0\t700\n1\tb\t0\t800\n");
    const ToolsRun::Result result = run.run({"prepare", "in", "--positions", "map"});
    QVERIFY2(result.status == 0, result.error.constData());
    QCOMPARE(result.error.contains("\"POS\" (column 3) holds no positions"), taken == "700 800");
    QByteArrayList found;
    for (const QByteArray& row : result.out.trimmed().split('\n').mid(1))
        found += row.split('\t')[1];
    QCOMPARE(found.join(' '), taken);
}

// What it prints is copied into a shell as it stands.
void PrepareCommand::printsACommandThatDecides() {
    const ToolsRun run;
    run.write("my file", "chr\tpos\tP of men\tP of women\n1\t10\t0.5\t0.1\n");
    const ToolsRun::Result refused = run.run({"prepare", "my file", "-o", "o.txt"});
    QCOMPARE(refused.status, 5);
    QByteArray command;
    for (const QByteArray& line : refused.error.split('\n'))
        if (line.contains("women'"))
            command = line.trimmed();
    QVERIFY2(command.startsWith("pelmark-tools "), refused.error.constData());
    QProcess shell;
    shell.setWorkingDirectory(run.path("."));
    shell.start("sh", {"-c", QString::fromUtf8(command).replace("pelmark-tools", "\"$0\""),
                       ToolsRun::program()});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.exitCode(), 0);
    QCOMPARE(run.read("o.txt"), QByteArray(header) + "\n1\t10\t0.1\t1\n");
}

void PrepareCommand::reports() {
    const ToolsRun run;
    run.write(
        "in",
        "CHR\tBP\tP\tP_GC\n1\t20\t0.5\t0.6\n1\t10\tNA\t0.6\n1\t15\t0.1\t0.2\n1\t30\t1e-400\t0.1\n");
    const QByteArray report = run.run({"prepare", "in", "-o", "o.txt"}).error;
    for (const char* text :
         {"in: 4 rows: 3 written to o.txt, 1 dropped\n", "  chromosome: \"CHR\" (column 1): ",
          "  position: \"BP\" (column 2): ", "  p: \"P\" (column 3): ", "Not chosen\n",
          "\"P_GC\" (column 4)", "Chromosomes: 1: 1 (3)\n", "Order: sorted",
          "p below the smallest number", "the strongest has 400\n", "  p-missing: 1 (line 3)\n"})
        QVERIFY2(report.contains(text), (text + ("\n" + report)).constData());
}

// Names with the signs that stand for the parts of a report.
void PrepareCommand::reportsNamesAsTheyStand() {
    const ToolsRun run;
    run.write("%3 %1.txt", "CHR\tBP\tP_%3\n%2\t20\t0.5\n%2\t30\tNA\n");
    const QByteArray report = run.run({"prepare", "%3 %1.txt", "-o", "%4.txt", "--p", "3"}).error;
    for (const char* text : {"%3 %1.txt: 2 rows: 1 written to %4.txt, 1 dropped\n",
                             "  p: \"P_%3\" (column 3): ", "Chromosomes: 1: %2 (1)\n"})
        QVERIFY2(report.contains(text), report.constData());
    const QByteArray cut =
        run.run({"drop", "%3 %1.txt", "--p", "3", "--region", "%2:1-20", "-o", "%5.txt"}).error;
    QVERIFY2(cut.contains("%3 %1.txt: 2 lines: 1 named, 1 written to %5.txt\n"), cut.constData());
    const QByteArray hits = run.run({"hits", "%3 %1.txt", "--p-column", "3"}).error;
    QVERIFY2(hits.contains("%3 %1.txt: 2 rows: 1 markers, 1 dropped\n"), hits.constData());
    const QByteArray check = run.run({"check", "%3 %1.txt"}).out;
    QVERIFY2(check.contains("%3 %1.txt:1: error: "), check.constData());
}

// A table without titles has numbers alone for its columns.
void PrepareCommand::reportsColumnsWithoutTitles() {
    const ToolsRun run;
    run.write("in", "1\t10\t0.5\n");
    const QByteArray report = run.run({"prepare", "in", "--no-header", "--chromosome", "1",
                                       "--position", "2", "--p", "3"})
                                  .error;
    QVERIFY2(report.contains("  p: column 3: named by --p\n"), report.constData());
}

void PrepareCommand::reportsForPrograms() {
    const ToolsRun run;
    run.write("in", "CHR\tBP\tP\n1\t20\t0.5\n1\t10\tNA\n1\t15\t0\n");
    QCOMPARE(run.run({"prepare", "in", "-o", "o.txt", "--json", "r.json"}).status, 0);
    const QJsonObject report = QJsonDocument::fromJson(run.read("r.json")).object();
    for (const char* key : {"version", "command", "inputs", "output", "rows", "written", "columns",
                            "not_chosen", "remarks", "kept_test", "chromosomes", "was_in_order",
                            "changed", "strongest_neg_log10_p", "dropped"})
        QVERIFY2(report.contains(QLatin1String(key)), key);
    QCOMPARE(report["version"].toInt(), 1);
    QCOMPARE(report["rows"].toInt(), 3);
    QCOMPARE(report["written"].toInt(), 2);
    QCOMPARE(report["was_in_order"].toBool(), false);
    QCOMPARE(report["changed"]["zero_by_smallest"].toInt(), 1);
    QCOMPARE(report["dropped"]["p-missing"]["count"].toInt(), 1);
    QCOMPARE(report["dropped"]["p-missing"]["first"][0]["line"].toInt(), 3);
}

void PrepareCommand::writesDroppedLines() {
    const ToolsRun run;
    run.write("in", "CHR\tBP\tP\n1\t20\t0.5\n1\t10\tNA\n1\tx\t0.1\n");
    QCOMPARE(run.run({"prepare", "in", "-o", "o.txt", "--dropped", "d.txt"}).status, 0);
    QCOMPARE(run.read("d.txt"),
             QByteArray("p-missing\t3\t1\t10\tNA\nposition-not-whole\t4\t1\tx\t0.1\n"));
    // Which chromosomes are small shows only at the end.
    run.write("in", "CHR\tBP\tP\n2\t7\t0.1\n1\t10\t0.5\n1\t20\t0.5\n1\t30\tNA\n");
    const ToolsRun::Result result =
        run.run({"prepare", "in", "-o", "o.txt", "--dropped", "d.txt", "--min-markers", "2"});
    QCOMPARE(run.read("d.txt"),
             QByteArray("small-chromosome\t2\t2\t7\t0.1\np-missing\t5\t1\t30\tNA\n"));
    QVERIFY2(result.error.contains("small-chromosome: 1 (line 2)"), result.error.constData());
}

void PrepareCommand::warnsOfANameThatTheDialogHides() {
    const ToolsRun run;
    run.write("in", "CHR\tBP\tP\n1\t20\t0.5\n");
    QVERIFY(run.run({"prepare", "in", "-o", "o.tsv"})
                .error.contains("o.tsv: the window's dialog shows only"));
    QVERIFY(!run.run({"prepare", "in", "-o", "o.CSV"}).error.contains("dialog"));
}

void PrepareCommand::isQuiet() {
    const ToolsRun run;
    run.write("in", "CHR\tBP\tP\n1\t20\t0.5\n");
    QCOMPARE(run.run({"prepare", "-q", "in", "-o", "o.txt"}).error, QByteArray());
}

void PrepareCommand::joinsFiles() {
    const ToolsRun run;
    run.write("b", "CHR\tBP\tP\n2\t20\t0.1\n");
    run.write("a", "CHR\tBP\tP\n1\t20\tNA\n1\t30\t0.1\n");
    const ToolsRun::Result result = run.run({"prepare", "b", "a"});
    QCOMPARE(result.out, QByteArray(header) + "\n1\t30\t0.1\t1\n2\t20\t0.1\t1\n");
    QVERIFY2(result.error.contains("p-missing: 1 (line a:2)"), result.error.constData());
    run.run({"prepare", "b", "a", "-o", "o.txt", "--dropped", "d.txt"});
    QCOMPARE(run.read("d.txt"), QByteArray("p-missing\ta\t2\t1\t20\tNA\n"));
}

QTEST_GUILESS_MAIN(PrepareCommand)
#include "tst_prepare_command.moc"
