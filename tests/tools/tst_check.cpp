#include "tools_run.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTest>

// What `check` says of files: one row for each verdict, fault and trap.
class Check : public QObject {
    Q_OBJECT

private slots:
    void says_data();
    void says();
    void tellsNoConsequences_data();
    void tellsNoConsequences();
    void sampleFiles_data();
    void sampleFiles();
    void readsAPipe();
    void limitsAKindToFive();
    void tellsALongPath_data();
    void tellsALongPath();
    void takesSeveralFiles();
    void theCommandMendsTheFile();
    void takesScaffoldsOfAPreparedTable();
    void asksWhetherManyLabelsAreScaffolds();
    void proposesNothingThatLeavesNoMarker();
    void everyFindingIsDescribed();

private:
    QSet<QString> m_codes; // found so far
};

namespace {

QJsonObject jsonOf(const QByteArray& text) {
    const QJsonObject document = QJsonDocument::fromJson(text).object();
    return document["version"] == 1 && document["command"] == "check"
               ? document["files"][0].toObject()
               : QJsonObject();
}

QSet<QString> codesOf(const QJsonObject& report) {
    QSet<QString> codes;
    for (const QJsonValue finding : report["findings"].toArray())
        codes.insert(finding["code"].toString());
    return codes;
}

constexpr const char* good = "chr\tpos\tp\n1\t10\t0.5\n1\t20\t0.1\n";

} // namespace

void Check::says_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("verdict");
    QTest::addColumn<QString>("code"); // empty: no finding at all
    QTest::addColumn<QString>("line"); // of the text report

    const auto row = [](const char* code, const char* verdict, const QByteArray& file,
                        const char* line, const char* name = "a.txt", const char* tag = "") {
        QTest::addRow("%s%s", code[0] ? code : "good", tag)
            << QString::fromLatin1(name) << file << (qstrcmp(verdict, "opens") == 0 ? 0 : 1)
            << QString::fromLatin1(verdict) << QString::fromLatin1(code) << QString::fromUtf8(line);
    };
    const QByteArray titles = "chr\tpos\tp\n";
    row("", "opens", good, "a.txt: opens\n");
    row("", "opens", "1,10,0.5\n1,20,0.1\n", "(delimiter: comma, no titles)", "a.csv",
        " without titles");
    row("p-not-a-number", "ends", titles + "1\t10\t0.5\n1\t20\t.\n1\t30\t1\n",
        "a.txt:3: error: p is \".\", which is no number (write NA) [p-not-a-number]\n");
    row("p-too-small", "ends", good + QByteArray("1\t30\t1e-400\n"),
        "a.txt:4: error: p is \"1e-400\", smaller than any number that the window reads");
    row("position-not-whole", "ends", good + QByteArray("1\t1.5e6\t0.1\n"),
        "a.txt:4: error: pos is \"1.5e6\"");
    row("position-not-whole", "ends", "chrpos\tpval\tx\n1:5\t0.1\t0\n1:6\t0.2\t3\n",
        "The window takes (delimiter: tab)\n  chromosome  \"chrpos\" (column 1)", "a.txt",
        " in the column of the chromosome");
    row("position-too-large", "ends", good + QByteArray("1\t3000000000\t0.1\n"),
        "a.txt:4: error: pos is \"3000000000\"");
    row("short-line", "ends", good + QByteArray("1\t30\n"),
        "a.txt:4: error: the line ends before column p");
    row("no-delimiter", "refuses", "hello\n",
        "a.txt:1: error: the first line has no tab, space or comma");
    row("too-few-columns", "refuses", "a b\n1 2\n",
        "a.txt:1: error: the first line has fewer than three");
    row("missing-titles", "refuses", "CHR\tBP\tP\n1\t10\t0.5\n1\t20\t0.5\n",
        "no title tells the window the position (a title with pos) [missing-titles]");
    row("too-few-markers", "refuses", titles + "1\t10\t0.5\n1\t20\tNA\n",
        "markers that the window can show: 1");
    row("compressed", "refuses",
        QByteArray::fromHex("1f8b08000000000000034bce28e22cc82fe62ce032e43434e034d0330532"
                            "8c400c432e0007ffdbf81c000000"),
        "a.txt.gz: warning: the name ends", "a.txt.gz");
    row("lone-returns", "refuses", "chr\tpos\tp\r1\t10\t0.5\r1\t20\t0.1\r", "the file is one line");
    row("columns-in-doubt", "opens-but",
        "chr\tpos\tpval\tP_value\n1\t10\t0.5\t0.1\n1\t20\t0.5\t0.1\n",
        "whether the window takes the right columns cannot be told");
    row("not-a-table", "refuses", "%PDF-1.4\n%\xE2\xE3\n1 0 obj\n", "this is no text but a PDF");
    row("wrong-position-column", "ends",
        "exposure\tchr\tpos\tp\nbmi\t1\t10\t0.5\nbmi\t1\t20\t0.5\n",
        "the window takes \"exposure\" for the position; the right column is \"pos\" (column 3)");
    row("log-as-p", "misreads", "chr\tpos\tneglog10_pval\n1\t10\t0.5\n1\t20\t3.5\n",
        "\"neglog10_pval\" for p, but it holds logarithms of p");
    row("log-as-p", "misreads", "chr\tpos\tpval\n1\t10\t-0.5\n1\t20\t-3.5\n",
        "\"pval\" for p, but it seems to hold logarithms of p", "a.txt", " seen in values");
    row("wrong-p-column", "misreads",
        "chr\tpos\thet_pval\tpval\n1\t10\t0.5\t0.1\n1\t20\t0.5\t0.2\n",
        "the window takes \"het_pval\" for p; the right column is \"pval\" (column 4)");
    row("names-as-chromosomes", "misreads", "rsid\tchr\tpos\tp\nrs1\t1\t10\t0.5\nrs2\t1\t20\t0.5\n",
        "the window takes \"rsid\" for the chromosome, but it holds marker names");
    row("p-zero", "opens-but", good + QByteArray("1\t30\t0.000\n"),
        "a.txt:4: warning: p is 0.000:");
    row("p-tiny", "opens-but", good + QByteArray("1\t30\t1e-310\n"),
        "a.txt:4: warning: p is 1e-310: drawn");
    row("p-not-finite", "opens-but", good + QByteArray("1\t30\tnan\n"),
        "a.txt:4: warning: p is \"nan\"");
    row("p-not-finite", "opens-but", good + QByteArray("1\t30\tinf\n"),
        "a.txt:4: warning: p is \"inf\"", "a.txt", " inf");
    row("p-out-of-range", "opens-but",
        QByteArray(good).append(QByteArray("1\t30\t0.3\n").repeated(150)) + "1\t30\t1.5\n",
        "a.txt:154: warning: p is 1.5, which no p-value can be");
    row("p-out-of-range", "opens-but",
        good + QByteArray("1\t30\t0.3\n").repeated(150) + "1\t30\t-0.5\n",
        "a.txt:154: warning: p is -0.5", "a.txt", " negative");
    row("position-not-positive", "opens-but", titles + "1\t-9\t0.5\n1\t10\t0.5\n",
        "a.txt:2: warning: pos is -9");
    row("chromosome-returns", "opens-but", good + QByteArray("2\t1\t0.1\n2\t2\t0.1\n1\t30\t0.1\n"),
        "a.txt:6: warning: chromosome \"1\" comes back after others");
    row("positions-unsorted", "opens-but", good + QByteArray("1\t15\t0.1\n"),
        "a.txt:4: warning: position 15 after 20");
    row("one-marker", "opens-but", good + QByteArray("2\t15\t0.1\n"),
        "a.txt:4: warning: chromosome \"2\" loads fewer than two markers");
    row("equal-positions", "opens-but", titles + "1\t10\t0.5\n1\t10\t0.1\n",
        "a.txt:2: warning: chromosome \"1\" begins and ends at the same position");
    row("several-spellings", "opens-but", good + QByteArray("chr1\t30\t0.1\nchr1\t40\t0.1\n"),
        "1 and chr1 are the same chromosome");
    row("several-tests", "opens-but",
        "#CHROM\tPOS\tID\tTEST\tP\n1\t10\tr1\tADD\t0.5\n1\t10\tr1\tDOMDEV\t0.4\n1\t20\tr2\tADD\t0."
        "5\n",
        "several tests share the file (ADD, DOMDEV)");
    row("", "opens", "#CHROM\tPOS\tID\tTest\tP\n1\t10\tr1\t0:20:3\t0.5\n1\t20\tr2\t1:19:3\t0.5\n",
        "a.txt: opens\n", "a.txt", " labels of genotypes");
    row("not-a-table", "refuses",
        QByteArray::fromHex("1f8b0800000000000203737276636262c002000143d29e19000000"),
        "this is no text but a BCF file", "a.txt", " packed");
    row("comment-lines", "refuses", QByteArray("##made by a tool\n") + good,
        "the file begins with ## lines");
    row("quotes", "ends",
        "\"chr\"\t\"pos\"\t\"pval\"\n\"1\"\t\"10\"\t\"0.5\"\n\"1\"\t\"20\"\t\"0.1\"\n",
        "fields are quoted");
    row("comma-and-space", "refuses", "chr,pos,p value,n\n1,10,0.5,3\n1,20,0.1,3\n",
        "commas separate the columns, but the first line has a space");
    row("aligned-columns", "ends", " CHR   POS     P\n   1    10   0.5\n   1    20   0.1\n",
        "runs of spaces align the columns");
    row("file-name", "opens-but", good, "a.tsv: warning: the name ends in neither .txt nor .csv",
        "a.tsv");
}

void Check::says() {
    QFETCH(QString, name);
    QFETCH(QByteArray, file);
    QFETCH(QString, code);
    QFETCH(QString, line);
    const ToolsRun run;
    run.write(name, file);
    const ToolsRun::Result text = run.run({"check", name});
    QTEST(text.status, "status");
    QVERIFY2(text.out.contains(line.toUtf8()), text.out.constData());
    QCOMPARE(text.error, QByteArray());
    const ToolsRun::Result json = run.run({"check", name, "--json", "-"});
    const QJsonObject report = jsonOf(json.out);
    QTEST(report["verdict"].toString(), "verdict");
    const QSet<QString> codes = codesOf(report);
    m_codes += codes;
    QVERIFY2(code.isEmpty() ? codes.isEmpty() : codes.contains(code), text.out.constData());
}

void Check::tellsNoConsequences_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("log-as-p") << QByteArray(
        "chr\tpos\tneg_log10_pval\n1\t10\t2\n1\t20\t0\n1\t30\t0.3\n");
    QTest::newRow("wrong-p-column") << QByteArray(
        "chr\tpos\tneg_log10_pval\tpval\n1\t10\t2\t0.01\n1\t20\t0\t1\n1\t30\t0.3\t0.5\n");
    QTest::newRow("names-as-chromosomes") << QByteArray(
        "rsid\tchr\tpos\tp\nrs1\t1\t30\t0.1\nrs1\t1\t20\t0.1\nrs2\t1\t40\t0.2\nrs2\t1\t40\t0.2\n"
        "RS2\t1\t40\t0.2\nrs3\t1\t41\t0.2\nrs4\t1\t42\t0.2\nrs1\t1\t50\t0.3\n");
    QTest::newRow("wrong-position-column")
        << QByteArray("chr\tpos_index\tbp\tp\n1\t5\t10\t0.1\n1\t0\t20\t0.2\n1\t5\t30\t0."
                      "5\n2\t4\t40\t0.1\n2\t4\t50\t0.3\n");
}

// What a wrong column makes of the file is no fault of the file's.
void Check::tellsNoConsequences() {
    QFETCH(const QByteArray, file);
    const ToolsRun run;
    run.write("a.txt", file);
    static const QRegularExpression code("\\[([a-z-]+)\\]\n");
    QStringList codes;
    const QString report = QString::fromUtf8(run.run({"check", "a.txt"}).out);
    for (auto found = code.globalMatch(report); found.hasNext();)
        codes.append(found.next().captured(1));
    QCOMPARE(codes, QStringList{QString::fromLatin1(QTest::currentDataTag())});
}

void Check::sampleFiles_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("verdict");
    const QString examples = QStringLiteral(PELMARK_EXAMPLES),
                  data = QStringLiteral(PELMARK_TEST_DATA);
    const std::pair<QString, const char*> expected[] = {
        {examples + "/chromosome1.txt", "opens"},
        {examples + "/genome_100k.txt", "opens"},
        {examples + "/small.txt", "opens-but"},
        {data + "/blocks_unsorted.txt", "opens-but"},
        {data + "/comma.csv", "opens-but"},
        {data + "/double_blanks.txt", "ends"},
        {data + "/nan_p.txt", "opens-but"},
        {data + "/neglog10_first.txt", "misreads"},
        {data + "/refused_bp.csv", "refuses"},
        {data + "/refused_no_p.txt", "refuses"},
        {data + "/refused_quoted.csv", "refuses"},
        {data + "/rsid_first.txt", "misreads"},
        {data + "/sorted_by_p_crlf.txt", "opens-but"},
    };
    for (const auto& [path, verdict] : expected)
        QTest::newRow(qPrintable(path.section(u'/', -1))) << path << QString::fromLatin1(verdict);
    int present = 0;
    for (const QString& folder : {examples, data})
        present += int(QDir(folder).entryList({"*.txt", "*.csv"}, QDir::Files).size());
    QCOMPARE(present, int(std::size(expected)));
}

void Check::sampleFiles() {
    QFETCH(QString, path);
    const ToolsRun run;
    const ToolsRun::Result result = run.run({"check", path, "--json", "-"});
    QCOMPARE(result.error, QByteArray());
    const QJsonObject report = jsonOf(result.out);
    QTEST(report["verdict"].toString(), "verdict");
    QCOMPARE(result.status, report["verdict"] == "opens" ? 0 : 1);
    for (const char* key : {"file", "packing", "rows", "markers", "left_out", "chromosomes",
                            "findings", "commands", "advice"})
        QVERIFY2(report.contains(QLatin1String(key)), key);
}

void Check::readsAPipe() {
    const ToolsRun run;
    const ToolsRun::Result result = run.run({"check", "-"}, good);
    QVERIFY2(result.out.startsWith("standard input: opens\n"), result.out.constData());
    QCOMPARE(result.status, 0);
    QCOMPARE(run.files(), QStringList());
}

void Check::limitsAKindToFive() {
    const ToolsRun run;
    run.write("a.txt", good + QByteArray("1\t30\tx\n").repeated(9));
    const QByteArray out = run.run({"check", "-q", "a.txt"}).out;
    QCOMPARE(out.count("which is no number"), 5);
    QVERIFY2(out.contains("a.txt:12: error: and 4 more, the last on this line [p-not-a-number]\n"),
             out.constData());
}

// The window keeps 200 bytes of a path.
void Check::tellsALongPath_data() {
    QTest::addColumn<int>("bytes");
    QTest::addColumn<QString>("verdict");
    QTest::addColumn<QString>("code");
    QTest::newRow("199") << 199 << "opens"
                         << "";
    QTest::newRow("200") << 200 << "opens-but"
                         << "path-full";
    QTest::newRow("201") << 201 << "refuses"
                         << "path-too-long";
}

void Check::tellsALongPath() {
    QFETCH(int, bytes);
    QFETCH(QString, code);
    const ToolsRun run;
    const auto missing = bytes - run.path(".txt").toUtf8().size();
    const QString name = QString(missing, u'x') + ".txt";
    run.write(name, good);
    const QJsonObject report = jsonOf(run.run({"check", name, "--json", "-"}).out);
    QTEST(report["verdict"].toString(), "verdict");
    m_codes += codesOf(report);
    QCOMPARE(codesOf(report), code.isEmpty() ? QSet<QString>() : QSet<QString>{code});
}

// A file that cannot be read does not keep the others from being checked.
void Check::takesSeveralFiles() {
    const ToolsRun run;
    run.write("a.txt", good);
    run.write("b.txt", "chr\tpos\tp\n1\t1\t.\n");
    const ToolsRun::Result result =
        run.run({"check", "a.txt", "none.txt", "b.txt", "--json", "out.json"});
    QCOMPARE(result.status, 3);
    QVERIFY(result.out.contains("a.txt: opens\n"));
    QVERIFY(result.out.contains("b.txt: ends at line 2\n"));
    QVERIFY(result.error.contains("none.txt"));
    QCOMPARE(QJsonDocument::fromJson(run.read("out.json"))["files"].toArray().size(), 2);
}

// The command that is printed can be copied into a shell, whatever the file is called.
namespace {

// One marker each.
QByteArray scaffolds(const QByteArray& titles, const QByteArray& p) {
    QByteArray file = titles + '\n';
    for (int i = 0; i < 3000; ++i)
        file += "sca" + QByteArray::number(i) + "\t10\t" + p + '\n';
    return file;
}

} // namespace

void Check::takesScaffoldsOfAPreparedTable() {
    const ToolsRun run;
    const QByteArray table = scaffolds("Chr\tPosition\tP\t-log10(P)", "0.5\t0.30103");
    run.write("in.txt", table);
    const QJsonObject report = jsonOf(run.run({"check", "in.txt", "--json", "-"}).out);
    QCOMPARE(report["verdict"].toString(), QStringLiteral("opens-but"));
    QCOMPARE(codesOf(report), QSet<QString>{"one-marker"});
    QVERIFY(report["commands"].toArray().isEmpty());
    QCOMPARE(run.run({"prepare", "in.txt", "-q"}).out, table);
}

void Check::asksWhetherManyLabelsAreScaffolds() {
    const ToolsRun run;
    run.write("in.txt", scaffolds("chr\tpos\tp", "0.5"));
    const QJsonObject report = jsonOf(run.run({"check", "in.txt", "--json", "-"}).out);
    QVERIFY(codesOf(report).contains("names-as-chromosomes"));
    QCOMPARE(report["commands"].toArray(),
             QJsonArray({"pelmark-tools prepare in.txt --chromosome COLUMN -o in.prepared.txt",
                         "pelmark-tools prepare in.txt --chromosome chr -o in.prepared.txt"}));
    QCOMPARE(run.run({"prepare", "in.txt", "-q"}).status, 5);
    const ToolsRun::Result taken = run.run({"prepare", "in.txt", "--chromosome", "chr"});
    QCOMPARE(taken.status, 0);
    QCOMPARE(taken.out.count('\n'), 3001);
    QVERIFY2(taken.error.contains("3000 in 3000 lines"), taken.error);
}

void Check::proposesNothingThatLeavesNoMarker() {
    const ToolsRun run;
    run.write("in.txt", "chr\tpos\tp\n1\t10\t0.5\n2\t10\t0.1\n");
    const QJsonObject report = jsonOf(run.run({"check", "in.txt", "--json", "-"}).out);
    QVERIFY(report["commands"].toArray().isEmpty());
    QVERIFY(report["advice"].toArray()[0].toString().contains("too few markers"));
}

void Check::theCommandMendsTheFile() {
    const ToolsRun run;
    const QString name = QStringLiteral("it's a 'file' $HOME.txt");
    run.write(name, "CHR\tBP\tP\n2\t20\t0.5\n1\t10\t0.4\n1\t5\t0.3\n2\t30\t0.1\n");
    const QJsonObject report = jsonOf(run.run({"check", name, "--json", "-"}).out);
    QCOMPARE(report["commands"].toArray().size(), 1);
    QProcess shell;
    shell.setWorkingDirectory(run.path("."));
    shell.start("sh", {"-c", report["commands"][0].toString().replace("pelmark-tools", "\"$0\""),
                       run.program()});
    QVERIFY(shell.waitForFinished());
    QVERIFY2(shell.exitCode() == 0, shell.readAllStandardError().constData());
    const ToolsRun::Result again = run.run({"check", "it's a 'file' $HOME.prepared.txt"});
    QVERIFY2(again.status == 0, again.out.constData());
}

// Runs last: each code of the document was found in some file, and each that was found is there.
void Check::everyFindingIsDescribed() {
    QFile document(QStringLiteral(PELMARK_TOOLS_DOCUMENT));
    QVERIFY(document.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(document.readAll());
    const QString section = text.section("## What check finds", 1).section("\n## ", 0, 0);
    QSet<QString> described;
    for (const QString& row : section.split(u'\n'))
        if (row.startsWith("| `"))
            for (const QString& code : row.section(u'|', 1, 1).split(u','))
                described.insert(code.trimmed().remove(u'`'));
    QCOMPARE((described - m_codes).values(), QList<QString>());
    QCOMPARE((m_codes - described).values(), QList<QString>());
}

QTEST_GUILESS_MAIN(Check)
#include "tst_check.moc"
