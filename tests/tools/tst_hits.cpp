#include "tools_run.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// What `hits` lists, and what it reports.
class HitsCommand : public QObject {
    Q_OBJECT

private slots:
    void lists_data();
    void lists();
    void readsEveryForm_data();
    void readsEveryForm();
    void appendsColumns();
    void readsTablesWithoutTitles();
    void reports();
    void reportsForPrograms();
    void reportsNoHits();
    void refuses_data();
    void refuses();
    void printsACommandThatDecides();
    void writesToATerminal();
};

namespace {

constexpr const char* header =
    "Chr\tPosition\tName\tP\t-log10(P)\tHits\tFirstHit\tLastHit\tNearby\tNextP\tLone";

// A tower, a lone dot and a second chromosome.
constexpr const char* scan = "CHR\tBP\tSNP\tP\tA1FREQ\tINFO SCORE\n"
                             "1\t1000000\trs1\t1e-6\t0.11\t0.91\n"
                             "1\t1100000\trs2\t1e-12\t0.12\t0.92\n"
                             "1\t1200000\trs3\t3E-09\t0.13\t0.93\n"
                             "1\t5000000\trs4\t4e-8\t0.14\t0.94\n"
                             "1\t5000100\trs5\t0.3\t0.15\t0.95\n"
                             "2\t7\trs6\t5e-8\t0.16\t0.96\n"
                             "2\t8\trs7\t4.9e-8\t0.17\t0.97\n";
constexpr const char* leads = "1\t1100000\trs2\t1e-12\t12\t2\t1100000\t1200000\t3\t3E-09\tno\n"
                              "1\t5000000\trs4\t4e-8\t7.39794\t1\t5000000\t5000000\t2\t0.3\tlone\n"
                              "2\t8\trs7\t4.9e-8\t7.3098\t1\t8\t8\t2\t5e-8\tno\n";

QByteArray table(const QByteArray& rows) {
    return QByteArray(header) + '\n' + rows;
}

QByteArray gzipped(const ToolsRun& run, const QByteArray& text) {
    run.write("packed", text);
    QProcess gzip;
    gzip.start("gzip", {"-c", run.path("packed")});
    return gzip.waitForFinished() ? gzip.readAllStandardOutput() : QByteArray();
}

} // namespace

void HitsCommand::lists_data() {
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("rows"); // after the header
    const auto row = [](const char* name, const QStringList& options, const char* file,
                        const char* rows) {
        QTest::newRow(name) << options << QByteArray(file) << QByteArray(rows);
    };
    row("as it is", {}, scan, leads);
    row("threshold", {"--p", "1e-11"}, scan,
        "1\t1100000\trs2\t1e-12\t12\t1\t1100000\t1100000\t3\t3E-09\tno\n");
    row("window", {"--p=1e-8", "--window=100,000"}, scan,
        "1\t1100000\trs2\t1e-12\t12\t1\t1100000\t1100000\t3\t3E-09\tno\n"
        "1\t1200000\trs3\t3E-09\t8.52288\t1\t1200000\t1200000\t3\t1e-12\tno\n");
    row("nothing below", {"--p", "1e-12"}, scan, "");
    row("another p column", {"--p-column", "Q"},
        "CHR\tBP\tP\tQ\n1\t10\t1e-20\t0.5\n1\t20\t0.5\t1e-9\n",
        "1\t20\tNA\t1e-9\t9\t1\t20\t20\t2\t0.5\tlone\n");
    row("equal p: the first in the file", {}, "CHR\tBP\tSNP\tP\n1\t90\ta\t1e-9\n1\t10\tb\t1E-9\n",
        "1\t90\ta\t1e-9\t9\t2\t10\t90\t2\t1E-9\tno\n");
    row("chromosomes in their order", {},
        "CHR\tBP\tSNP\tP\nX\t5\tx\t1e-9\n10\t5\tj\t1e-9\n2\t5\tb\t1e-9\n",
        "2\t5\tb\t1e-9\t9\t1\t5\t5\t1\tNA\tlone\n10\t5\tj\t1e-9\t9\t1\t5\t5\t1\tNA\tlone\n"
        "X\t5\tx\t1e-9\t9\t1\t5\t5\t1\tNA\tlone\n");
    row("-log10 p beyond doubles", {},
        "CHR\tBP\tID\tLOG10P\n1\t10\ta\t399.5\n1\t20\tb\t1200.25\n1\t30\tc\t600.125\n",
        "1\t20\tb\t4.94065645841247e-324\t1200.25\t3\t10\t30\t3\t4.94065645841247e-324\tno\n");
    row("p beyond doubles", {"--p", "1e-399"},
        "CHR\tBP\tID\tP\n1\t10\ta\t4e-400\n1\t20\tb\t1e-320\n1\t30\tc\t1e-399\n",
        "1\t10\ta\t4.94065645841247e-324\t399.398\t1\t10\t10\t3\t4.94065645841247e-324\tno\n");
    row("p of 0", {}, "CHR\tBP\tID\tP\n1\t10\ta\t0\n1\t20\tb\t1.50e-30\n",
        "1\t10\ta\t1.50e-30\t29.8239\t2\t10\t20\t2\t1.50e-30\tno\n");
    row("one test of several", {},
        "CHR\tBP\tID\tTEST\tP\n1\t10\ta\tADD\t0.5\n1\t10\ta\tDOM\t1e-9\n1\t20\tb\tADD\t1e-8\n"
        "1\t20\tb\tDOM\t0.1\n",
        "1\t20\tb\t1e-8\t8\t1\t20\t20\t2\t0.5\tlone\n");
    row("spaces, quotes, a tab in a name", {},
        "\"CHR\" \"BP\" \"SNP\" \"P\"\n1 10 \"a\tb\" 1e-9\n1 20 \"c\" 0.5\n",
        "1\t10\ta b\t1e-9\t9\t1\t10\t10\t2\t0.5\tlone\n");
}

void HitsCommand::lists() {
    QFETCH(QStringList, options);
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, rows);
    const ToolsRun run;
    run.write("in", file);
    const ToolsRun::Result result = run.run(QStringList{"hits", "in"} + options);
    QVERIFY2(result.status == 0, result.error.constData());
    QCOMPARE(result.out, table(rows));
}

void HitsCommand::readsEveryForm_data() {
    QTest::addColumn<bool>("isGzipped");
    QTest::addColumn<bool>("isReversed");
    QTest::addColumn<bool>("isPiped");
    for (int form = 0; form < 8; ++form)
        QTest::addRow("%s%s%s", (form & 1) != 0 ? "gzip " : "plain ",
                      (form & 2) != 0 ? "reversed " : "in order ",
                      (form & 4) != 0 ? "pipe" : "file")
            << ((form & 1) != 0) << ((form & 2) != 0) << ((form & 4) != 0);
}

void HitsCommand::readsEveryForm() {
    QFETCH(bool, isGzipped);
    QFETCH(bool, isReversed);
    QFETCH(bool, isPiped);
    const ToolsRun run;
    QByteArray text(scan);
    if (isReversed) {
        QByteArrayList lines = text.trimmed().split('\n');
        std::reverse(lines.begin() + 1, lines.end());
        text = lines.join('\n') + '\n';
    }
    const QByteArray bytes = isGzipped ? gzipped(run, text) : text;
    QCOMPARE(bytes.startsWith("\x1f\x8b"), isGzipped);
    run.write("in", bytes);
    const ToolsRun::Result result = isPiped ? run.run({"hits", "-", "-o", "o.tsv"}, bytes)
                                            : run.run({"hits", "in", "-o", "o.tsv"});
    QVERIFY2(result.status == 0, result.error.constData());
    QCOMPARE(run.read("o.tsv"), table(leads));
    QCOMPARE(result.out, QByteArray());
}

void HitsCommand::appendsColumns() {
    const ToolsRun run;
    run.write("in", scan);
    const ToolsRun::Result result =
        run.run({"hits", "in", "--p", "1e-11", "--columns", "INFO SCORE,5", "--json", "j"});
    QCOMPARE(result.out, QByteArray(header) +
                             "\tINFO SCORE\tA1FREQ\n1\t1100000\trs2\t1e-12\t12\t1\t"
                             "1100000\t1100000\t3\t3E-09\tno\t0.92\t0.12\n");
    const QJsonObject lead = QJsonDocument::fromJson(run.read("j"))["leads"][0].toObject();
    QCOMPARE(lead["own_columns"].toObject(),
             (QJsonObject{{"INFO SCORE", "0.92"}, {"A1FREQ", "0.12"}}));
}

void HitsCommand::readsTablesWithoutTitles() {
    const ToolsRun run;
    run.write("in", "7\t10\t1e-9\tx\n7\t20\t0.5\ty\n");
    const QStringList words{"hits",       "in", "--no-header",  "--chromosome", "1",
                            "--position", "2",  "--p-column=3", "--columns"};
    QCOMPARE(run.run(words + QStringList("4")).out,
             QByteArray(header) + "\tV4\n7\t10\tNA\t1e-9\t9\t1\t10\t10\t2\t0.5\tlone\tx\n");
    const ToolsRun::Result refused = run.run(words + QStringList("5"));
    QCOMPARE(refused.status, 2);
    QVERIFY2(refused.error.contains("--columns 5: there is no such column among the 4"),
             refused.error.constData());
}

void HitsCommand::reports() {
    const ToolsRun run;
    run.write("in", QByteArray(scan) + "2\t9\trs8\tNA\t0.2\t0.9\n");
    const QByteArray report =
        run.run({"hits", "in", "-o", "o.tsv", "--p-column", "P", "--window", "1000"}).error;
    for (const char* text :
         {"in: 8 rows: 7 markers, 1 dropped\n",
          "  chromosome: \"CHR\" (column 1): ", "  p: \"P\" (column 4): named by --p-column\n",
          "  p-missing: 1 (line 9)\n", "Threshold: p below 5e-8\n",
          "Leads: 4, at least 1000 base pairs apart, written to o.tsv\n", "Lambda: 65.4068\n"})
        QVERIFY2(report.contains(text), (text + ("\n" + report)).constData());
    QCOMPARE(run.run({"hits", "in", "-q", "-o", "o.tsv"}).error, QByteArray());
}

void HitsCommand::reportsForPrograms() {
    const ToolsRun run;
    run.write("in", "CHR\tBP\tP\n1\t20\t0.5\n1\t10\tNA\n1\t15\t1e-9\n");
    QCOMPARE(run.run({"hits", "in", "-o", "o.tsv", "--json", "-"}).status, 0);
    const QJsonObject report =
        QJsonDocument::fromJson(run.run({"hits", "in", "-o", "o.tsv", "--json", "-"}).out).object();
    QCOMPARE(report["version"].toInt(), 1);
    QCOMPARE(report["command"].toString(), QStringLiteral("hits"));
    QCOMPARE(report["rows"].toInt(), 3);
    QCOMPARE(report["markers"].toInt(), 2);
    QCOMPARE(report["threshold"].toString(), QStringLiteral("5e-8"));
    QCOMPARE(report["window"].toInt(), 500'000);
    QCOMPARE(report["dropped"]["p-missing"]["count"].toInt(), 1);
    QVERIFY(report["lambda"].toDouble() > 1.0);
    const QJsonObject expected{{"chromosome", "1"},
                               {"position", 15},
                               {"line", 4},
                               {"name", {}},
                               {"p", "1e-9"},
                               {"neg_log10_p", "9"},
                               {"hits", 1},
                               {"first_hit", 15},
                               {"last_hit", 15},
                               {"nearby", 2},
                               {"next_p", "0.5"},
                               {"lone", true},
                               {"own_columns", QJsonObject()}};
    QCOMPARE(report["leads"].toArray(), QJsonArray{expected});
}

void HitsCommand::reportsNoHits() {
    const ToolsRun run;
    run.write("in", "CHR\tBP\tP\n1\t20\t0.5\n");
    const ToolsRun::Result result = run.run({"hits", "in", "--json", "j"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, table({}));
    QVERIFY(result.error.contains("Leads: 0,"));
    QVERIFY(result.error.contains("Lambda: 1.0000\n"));
    const QJsonDocument report = QJsonDocument::fromJson(run.read("j"));
    QCOMPARE(report["leads"], QJsonValue(QJsonArray()));
    QCOMPARE(report["lambda"], QJsonValue(1.0));
}

void HitsCommand::refuses_data() {
    QTest::addColumn<QStringList>("words"); // after the command
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const QStringList& words, int status, const char* message) {
        QTest::addRow("%s", qPrintable(words.join(' '))) << words << status << QByteArray(message);
    };
    for (const char* p : {"P", "0", "-1", "2", "<1e-5", "NA"})
        row({"in", "--p", p}, 2, ": write a threshold above 0, up to 1, such as 5e-8.");
    for (const char* window : {"0", "-5", "1.5", "wide"})
        row({"in", "--window", window}, 2, ": write a whole number of base pairs from 1.");
    row({"in", "in"}, 2, "hits reads one file.");
    row({"in", "--columns", "A1FRQ,P"}, 2, "    pelmark-tools hits in --columns A1FREQ,P\n");
    row({"in", "--columns", "P,"}, 2, "--columns : there is no such column");
    row({"in", "--p-column", "PVAL"}, 2, "--p-column PVAL: there is no such column");
    row({"in", "--p-from", "z", "--p-column", "P"}, 2, "cannot be combined with --p-column or");
    row({"in", "-o", "in"}, 2, "in: is an input too");
    row({"in", "-o", "o", "--json", "o"}, 2, "two outputs cannot share a file");
    row({"none"}, 3, "none: cannot be read");
    row({"cut"}, 3, "cut: ");
    row({"in", "-o", "no/o"}, 4, "no/o: cannot be written");
    row({"two"}, 5, "Say which to take with --p-column.");
}

void HitsCommand::refuses() {
    QFETCH(QStringList, words);
    QFETCH(QByteArray, message);
    const ToolsRun run;
    run.write("in", scan);
    run.write("two", "chr\tpos\tP_EUR\tP_AFR\n1\t10\t0.5\t0.1\n");
    run.write("cut", QByteArray::fromHex("1f8b08000000000000034bce28"));
    const QStringList before = run.files();
    const ToolsRun::Result result = run.run(QStringList("hits") + words);
    QTEST(result.status, "status");
    QVERIFY2(result.error.contains(message), result.error.constData());
    QVERIFY(result.error.startsWith("pelmark-tools: "));
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(run.files(), before);
    QCOMPARE(run.read("in"), QByteArray(scan));
}

// --p goes on being the threshold in what it prints.
void HitsCommand::printsACommandThatDecides() {
    const ToolsRun run;
    run.write("in", "chr\tpos\tP of men\tP of women\tA, B\n1\t10\t0.5\t1e-4\tz\n");
    const QStringList words{"hits", "in", "--p", "1e-3"};
    const ToolsRun::Result refused = run.run(words);
    QCOMPARE(refused.status, 5);
    const QByteArray command("pelmark-tools hits in --p 1e-3 --p-column 'P of women'");
    QVERIFY2(refused.error.contains("    " + command + '\n'), refused.error.constData());
    const QStringList decided = words + QStringList{"--p-column", "P of women"};
    QCOMPARE(run.run(decided).out, table("1\t10\tNA\t1e-4\t4\t1\t10\t10\t1\tNA\tlone\n"));
    // A title with a comma has no place in a list.
    const ToolsRun::Result unknown = run.run(decided + QStringList{"--columns", "pos,A"});
    QVERIFY2(unknown.error.contains(command + " --columns pos,5\n"), unknown.error.constData());
}

// The table is short enough to be read there.
void HitsCommand::writesToATerminal() {
    const ToolsRun run;
    run.write("in", scan);
    const ToolsRun::Result result = run.runOnTerminal({"hits", "in"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, table(leads));
}

QTEST_GUILESS_MAIN(HitsCommand)
#include "tst_hits.moc"
