#include "chromosome_load.h"
#include "point_table.h"
#include "support/random.h"
#include "tools_run.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringEncoder>
#include <QTest>

// `keep` and `drop`: what each writes, what they say, and that together they write the file.
class Cut : public QObject {
    Q_OBJECT

private slots:
    void togetherTheyAreTheFile();
    void inputs_data();
    void inputs();
    void refuses_data();
    void refuses();
    void protectsItsInputs();
    void leavesTheOldFileAtARefusal();
    void reports();
    void reportsForPrograms();
    void warnsOfWhatNamesNothing();
    void anAtSignInAName();
    void fileAsItStands();
};

namespace {

const QByteArray table = "Chr\tPosition\tP\t-log10(P)\n";
const QByteArray markers = "SNP\tCHR\tBP\tP\n"
                           "rs1\t1\t10\t0.1\n"
                           "rs2\t1\t20\t0.5\n"
                           "# half\n"
                           "rs3\t2\t10\t0.1\n"
                           "rs4\t2\t20\tNA\n"
                           "rs5\t2\t30\t0.25\n";

// A random result file as text, with its lines.
struct Scan {
    QStringList lines; // each with its end
    QByteArray mark;
    std::optional<QStringConverter::Encoding> wide;
    bool isPacked = false;
    bool hasNames = false;
    QStringList options; // that `prepare` needs

    QByteArray bytes(const QList<bool>& chosen, bool areKept) const {
        QStringEncoder encoder(wide.value_or(QStringConverter::Utf8));
        QByteArray all = mark;
        for (qsizetype i = 0; i < lines.size(); ++i)
            if (i == 0 || lines[i].startsWith(u'#') || chosen[i] == areKept)
                all += QByteArray(encoder.encode(lines[i]));
        return all;
    }
    QByteArray bytes() const { return bytes(QList<bool>(lines.size(), false), false); }
};

struct Layout {
    const char* titles; // name, chromosome, position, test and p in braces
    const char* row;
    bool hasLogs = false;
    bool hasDecimalComma = false;
};

constexpr Layout layouts[] = {
    {"id\tchr\tpos\tp", "%n\t%c\t%x\t%p"},
    {" CHR  SNP      BP     P ", "  %c   %n    %x   %p "},
    {"CHROM GENPOS ID TEST LOG10P", "%c %x %n %t %p", true},
    {"\"rsid\",\"chromosome\",\"position\",\"pvalue\"", "\"%n\",\"%c\",\"%x\",\"%p\""},
    {"SNP;CHR;BP;P", "%n;%c;%x;%p", false, true},
    {"MarkerName\tPvalue\tEffect", "%c:%x:A:C\t%p\t0.1"},
    {"#CHROM\tPOS\tID\tNEG_LOG10_P\tNOTE", "%c\t%x\t%n\t%p\tna\u00efve \u0A0A", true},
};

Scan randomScan(Random& random) {
    const Layout& layout = random.oneOf(layouts);
    const QString end = random.oneOf({"\n", "\n", "\r\n", "\r"});
    const QStringList values =
        layout.hasLogs
            ? QStringList{"0.30103", "7.5", "320.5", "1e-3", "0", "2", "400", "NA"}
            : QStringList{"0.5", "0.25", "3.3e-5", "1", "0.0123456789", "1e-310", "0", "NA"};
    Scan scan;
    scan.hasNames = QByteArray(layout.row).contains("%n");
    if (random.oneIn(4))
        scan.wide = random.oneOf({QStringConverter::Utf16LE, QStringConverter::Utf16BE,
                                  QStringConverter::Utf32LE, QStringConverter::Utf32BE});
    if (scan.wide)
        scan.mark = QByteArray(QStringEncoder(*scan.wide).encode(QString(QChar(0xFEFF))));
    else if (!scan.wide && random.oneIn(4))
        scan.mark = "\xEF\xBB\xBF";
    scan.isPacked = random.oneIn(3);
    scan.lines.append(QString::fromUtf8(layout.titles) + end);
    for (const char* chromosome : {"1", "2", "chrX"})
        for (int i = 0, position = 0; i < 30; ++i) {
            position += random.below(4);
            QString line = QString::fromUtf8(layout.row);
            QString p = random.oneOf(values);
            if (layout.hasDecimalComma)
                p.replace(u'.', u',');
            line.replace("%c", chromosome)
                .replace("%x", QString::number(position + 1))
                .replace("%n", QStringLiteral("rs%1").arg(random.below(200)))
                .replace("%t", random.oneIn(4) ? "DOM" : "ADD")
                .replace("%p", p);
            if (random.oneIn(20))
                scan.lines.append(QStringLiteral("# comment") + end);
            scan.lines.append(line + end);
        }
    if (random.oneIn(3))
        for (qsizetype i = scan.lines.size() - 1; i > 1; --i)
            scan.lines.swapItemsAt(i, 1 + random.below(static_cast<int>(i)));
    if (random.oneIn(3))
        scan.lines.last().chop(end.size());
    return scan;
}

QByteArray gzipped(const QByteArray& content) {
    QProcess gzip;
    gzip.start("gzip", {"-c"});
    gzip.write(content);
    gzip.closeWriteChannel();
    if (!gzip.waitForFinished())
        qFatal("no gzip");
    return gzip.readAllStandardOutput();
}

// A marker of the prepared file.
struct PreparedRow {
    QByteArray chromosome;
    int position = 0;
    QByteArray name;
    qsizetype line = 0; // of the original, from 0
    QByteArray saved;   // as the window saves it
};

// What the window makes of the prepared file, with the lines that it is of.
QList<PreparedRow> rowsOf(const ToolsRun& run, const QString& prepared) {
    QList<PreparedRow> rows;
    QHash<QByteArray, QByteArrayList> saved;
    const QByteArrayList lines = run.read(prepared).trimmed().split('\n');
    for (const QByteArray& line : lines.sliced(1)) {
        const QByteArrayList fields = line.split('\t');
        PreparedRow row{fields[0],
                        fields[1].toInt(),
                        fields.value(fields.size() - 2),
                        fields.last().toLongLong() - 1,
                        {}};
        if (!saved.contains(row.chromosome)) {
            QFile file(run.path(prepared));
            const auto points = loadChromosome(file, QString::fromUtf8(row.chromosome));
            QBuffer buffer;
            buffer.open(QIODevice::WriteOnly);
            if (!writePointTable(buffer, std::get<Points>(points), QStringLiteral("1")))
                qFatal("cannot write a table");
            saved[row.chromosome] = buffer.data().trimmed().split('\n').sliced(1);
        }
        row.saved = saved[row.chromosome].takeFirst();
        rows.append(row);
    }
    return rows;
}

// Chooses rows of a chromosome as a box does, or by chance; the lines of those that are like them
// come first in the file.
QByteArray chooseRows(const QList<PreparedRow>& all, const QByteArray& chromosome, Random& random,
                      QList<bool>& chosen) {
    const int first = random.below(40), last = first + random.below(40);
    const bool isThin = random.oneIn(2);
    QByteArray rows;
    QHash<QByteArray, int> count;
    for (const PreparedRow& row : all)
        if (row.chromosome == chromosome && row.position >= first && row.position <= last &&
            (!isThin || random.oneIn(2))) {
            rows += row.saved + '\n';
            ++count[row.saved];
        }
    QList<PreparedRow> inFile = all;
    std::sort(inFile.begin(), inFile.end(),
              [](const PreparedRow& a, const PreparedRow& b) { return a.line < b.line; });
    for (const PreparedRow& row : inFile)
        if (row.chromosome == chromosome && count[row.saved]-- > 0)
            chosen[row.line] = true;
    return rows;
}

} // namespace

// Random files, cut by tables as the window saves them of the prepared file.
void Cut::togetherTheyAreTheFile() {
    Random random(runSeed());
    const int cases = randomCases(80);
    qsizetype cut = 0;
    for (int i = cases; i > 0; --i) {
        const Scan scan = randomScan(random);
        const ToolsRun run;
        run.write("scan", scan.isPacked ? gzipped(scan.bytes()) : scan.bytes());
        const ToolsRun::Result made = run.run({"prepare", "scan", "--lines", "-q", "-o", "p.txt"});
        QVERIFY2(made.status == 0, made.error.constData());
        const QList<PreparedRow> rows = rowsOf(run, "p.txt");
        QList<bool> chosen(scan.lines.size(), false);
        QStringList words{"scan"};
        for (const char* chromosome : {"1", "2", "chrX"})
            if (random.oneIn(2)) {
                const QString name = QStringLiteral("%1.txt").arg(chromosome);
                run.write(name, table + chooseRows(rows, chromosome, random, chosen));
                words.append(name + u'@' + chromosome);
            }
        if (random.oneIn(2)) {
            words += {"--region", "X:5-20"};
            for (const PreparedRow& row : rows)
                if (row.chromosome == "chrX" && row.position >= 5 && row.position <= 20)
                    chosen[row.line] = true;
        }
        if (scan.hasNames && random.oneIn(2)) {
            run.write("names", "rs1\nrs50\nrs150\nrs199\n");
            words += {"--names", "names"};
            for (const PreparedRow& row : rows)
                if (QByteArrayList{"rs1", "rs50", "rs150", "rs199"}.contains(row.name))
                    chosen[row.line] = true;
        }
        if (words.size() == 1)
            continue;
        cut += chosen.count(true);
        for (const bool areKept : {true, false}) {
            const ToolsRun::Result result =
                run.run(QStringList(areKept ? "keep" : "drop") + words + QStringList{"-o", "out"});
            const QByteArray about = words.join(u' ').toUtf8() + '\n' + result.error;
            QVERIFY2(result.status == 0, about.constData());
            QVERIFY2(run.read("out") == scan.bytes(chosen, areKept), about.constData());
        }
    }
    QVERIFY2(cut > 5 * cases, qPrintable(QStringLiteral("only %1 lines were cut").arg(cut)));
}

void Cut::inputs_data() {
    QTest::addColumn<QByteArray>("scan");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("kept"); // after the header
    QTest::addColumn<QByteArray>("rest");

    const auto row = [](const char* name, const QByteArray& file, const QStringList& options,
                        const char* kept, const char* rest) {
        QTest::newRow(name) << file << options << QByteArray(kept) << QByteArray(rest);
    };
    const QByteArray three = "CHR\tBP\tP\n1\t10\t0.1\n1\t20\t0.5\n1\t30\t0\n";
    row("as it is", three, {}, "1\t10\t0.1\n", "1\t20\t0.5\n1\t30\t0\n");
    row("packed", gzipped(three), {}, "1\t10\t0.1\n", "1\t20\t0.5\n1\t30\t0\n");
    row("columns by option", "CHR\tBP\tP_a\tP_b\n1\t10\t0.1\t0.5\n1\t10\t0.5\t0.1\n",
        {"--p", "P_b"}, "1\t10\t0.5\t0.1\n", "1\t10\t0.1\t0.5\n");
    row("a test by name", "CHR\tBP\tP\tTEST\n1\t10\t0.1\tADD\n1\t10\t0.1\tDOM\n", {"--test", "DOM"},
        "1\t10\t0.1\tDOM\n", "1\t10\t0.1\tADD\n");
    row("p of 0 dropped", "CHR\tBP\tP\n1\t10\t0\n1\t10\t0.1\n", {"--zero", "drop"}, "1\t10\t0.1\n",
        "1\t10\t0\n");
    row("p of 0 as the smallest", "CHR\tBP\tP\n1\t10\t0\n1\t20\t0.1\n", {}, "1\t10\t0\n",
        "1\t20\t0.1\n");
    row("counted from 0", "CHR\tBP\tP\n1\t9\t0.1\n1\t10\t0.1\n", {"--zero-based"}, "1\t9\t0.1\n",
        "1\t10\t0.1\n");
}

void Cut::inputs() {
    QFETCH(QByteArray, scan);
    QFETCH(QStringList, options);
    QFETCH(QByteArray, kept);
    const ToolsRun run;
    run.write("scan", scan);
    run.write("t.txt", table + "7\t10\t0.1\t1\n");
    const ToolsRun::Result keep = run.run(QStringList{"keep", "scan", "t.txt"} + options);
    QVERIFY2(keep.status == 0, keep.error.constData());
    QCOMPARE(keep.out.mid(keep.out.indexOf('\n') + 1), kept);
    const ToolsRun::Result drop = run.run(QStringList{"drop", "-", "t.txt"} + options, scan);
    QVERIFY2(drop.status == 0, drop.error.constData());
    QTEST(drop.out.mid(drop.out.indexOf('\n') + 1), "rest");
}

void Cut::refuses_data() {
    QTest::addColumn<QStringList>("words"); // after the scan
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("message");

    const auto row = [](const char* name, const QStringList& words, int status,
                        const char* message) {
        QTest::newRow(name) << words << status << QByteArray(message);
    };
    row("nothing named", {}, 2, "Name a table that the window saved, a --region or --names.");
    row("several chromosomes", {"both.txt"}, 5, "both.txt@1, both.txt@2");
    row("no such row", {"none.txt"}, 5,
        "none.txt:3: chromosome 1 of scan has 1 of the table's 2 rows, but not this one: "
        "position 11, P 0.1, -log10(P) 1.");
    row("no row at all", {"none.txt@2"}, 5,
        "none.txt:2: scan has no such marker: position 20, P 0.5, -log10(P) 0.30103.");
    row("no such chromosome", {"both.txt@3"}, 2,
        "both.txt@3: scan has no chromosome 3. It has: 1, 2.");
    row("no such region", {"--region", "3:1-2"}, 2, "scan has no chromosome 3. It has: 1, 2.");
    row("not a region", {"--region", "1:2"}, 2, "write LABEL:FIRST-LAST");
    row("not a saved table", {"scan"}, 5, "this is no table that the window saved");
    row("a damaged row", {"bad.txt"}, 5, "bad.txt:2: ");
    row("no such file", {"gone.txt"}, 3, "gone.txt: cannot be read");
    row("no such list", {"--names", "gone"}, 3, "gone: cannot be read");
    row("no such column", {"both.txt", "--p", "Q"}, 2, "--p");
    row("no such option", {"both.txt", "--regoin", "1:1-2"}, 2, "did you mean --region?");
}

void Cut::refuses() {
    QFETCH(QStringList, words);
    QFETCH(QByteArray, message);
    const ToolsRun run;
    run.write("scan", markers);
    run.write("both.txt", table + "1\t10\t0.1\t1\n");
    run.write("none.txt", table + "1\t20\t0.5\t0.30103\n1\t11\t0.1\t1\n");
    run.write("bad.txt", table + "1\t20\n");
    const QStringList before = run.files();
    for (const QString command : {"keep", "drop"}) {
        const ToolsRun::Result result =
            run.run(QStringList{command, "scan", "-o", "out.txt", "--json", "j"} + words);
        QTEST(result.status, "status");
        QVERIFY2(result.error.contains(message), result.error.constData());
        QCOMPARE(run.files(), before);
    }
}

void Cut::protectsItsInputs() {
    const ToolsRun run;
    run.write("scan", markers);
    run.write("t.txt", table + "1\t20\t0.5\t0.30103\n");
    run.write("names", "rs1\n");
    for (const QString input : {"scan", "t.txt", "names"}) {
        const QByteArray before = run.read(input);
        const ToolsRun::Result result =
            run.run({"drop", "scan", "t.txt", "--names", "names", "-o", "./" + input});
        QCOMPARE(result.status, 2);
        QVERIFY2(result.error.contains("is an input too"), result.error.constData());
        QCOMPARE(run.read(input), before);
    }
}

void Cut::leavesTheOldFileAtARefusal() {
    const ToolsRun run;
    QByteArray packed = gzipped(QByteArray(markers).append(QByteArray(100'000, '#')));
    packed.chop(9);
    run.write("scan", packed);
    run.write("out.txt", "old");
    QCOMPARE(run.run({"drop", "scan", "--region", "1:1-20", "-o", "out.txt"}).status, 3);
    QCOMPARE(run.read("out.txt"), QByteArray("old"));
    QCOMPARE(run.files(), QStringList({"out.txt", "scan"}));
}

void Cut::reports() {
    const ToolsRun run;
    run.write("scan", markers + "rs6\t2\t30\t0.25\n");
    run.write("t.txt", table + "1\t30\t0.25\t0.60206\n");
    run.write("names", "rs1\nrs4\nrs9\n");
    const QStringList words{"scan", "t.txt", "--region", "1:1-20", "--names", "names"};
    const QByteArray parts =
        "  t.txt: 1 row, 1 matched on chromosome 2; 1 of them like others that "
        "are not named: the first in the file were taken\n"
        "  1:1-20: 2 markers on chromosome 1\n"
        "  names: 3 names, 1 line matched; 2 names not found (rs4, rs9)\n";
    const ToolsRun::Result keep = run.run(QStringList{"keep"} + words + QStringList{"-o", "k"});
    QVERIFY2(keep.error.startsWith("scan: 6 lines: 3 named, 3 written to k\nKept\n" + parts +
                                   "Columns\n"),
             keep.error.constData());
    QVERIFY2(
        keep.error.endsWith("Lines that no view holds: 1, left out\n  p-missing: 1 (line 6)\n"),
        keep.error.constData());
    const ToolsRun::Result drop = run.run(QStringList{"drop"} + words);
    QVERIFY2(drop.error.startsWith("scan: 6 lines: 3 named, 3 written to standard output\n"
                                   "Dropped\n" +
                                   parts),
             drop.error.constData());
    QVERIFY2(drop.error.endsWith("Lines that no view holds: 1, written\n  p-missing: 1 (line 6)\n"),
             drop.error.constData());
    QCOMPARE(run.run(QStringList{"drop", "-q"} + words).error, QByteArray());
}

void Cut::reportsForPrograms() {
    const ToolsRun run;
    run.write("scan", markers);
    run.write("t.txt", table + "1\t30\t0.25\t0.60206\n");
    const ToolsRun::Result result =
        run.run({"drop", "scan", "t.txt", "--region", "chr1:20-20", "-o", "out", "--json", "-"});
    const QJsonObject json = QJsonDocument::fromJson(result.out).object();
    QCOMPARE(json["version"], 1);
    QCOMPARE(json["command"], "drop");
    QCOMPARE(json["input"], "scan");
    QCOMPARE(json["output"], "out");
    QCOMPARE(json["lines"], 5);
    QCOMPARE(json["named"], 2);
    QCOMPARE(json["written"], 3);
    QCOMPARE(json["not_in_views"], 1);
    QCOMPARE(json["without_marker"]["p-missing"]["count"], 1);
    const QJsonObject first = json["parts"][0].toObject(), second = json["parts"][1].toObject();
    QCOMPARE(first["kind"], "table");
    QCOMPARE(first["name"], "t.txt");
    QCOMPARE(first["named"], 1);
    QCOMPARE(first["matched"], 1);
    QCOMPARE(first["chromosome"], "2");
    QCOMPARE(first["equal"], 0);
    QCOMPARE(second["kind"], "region");
    QCOMPARE(second["chromosome"], "1");
    QCOMPARE(second["matched"], 1);
    QCOMPARE(run.run({"drop", "scan", "t.txt", "--json", "-"}).status, 2);
}

void Cut::warnsOfWhatNamesNothing() {
    const ToolsRun run;
    run.write("scan", markers);
    run.write("t.txt", table);
    run.write("names", "rs9\n");
    const ToolsRun::Result result =
        run.run({"drop", "scan", "t.txt", "--region", "2:11-29", "--names", "names", "-q"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, markers);
    QCOMPARE(result.error, QByteArray("pelmark-tools: t.txt: names no line of scan.\n"
                                      "pelmark-tools: 2:11-29: names no line of scan.\n"
                                      "pelmark-tools: names: names no line of scan.\n"));
}

void Cut::anAtSignInAName() {
    const ToolsRun run;
    run.write("scan", markers);
    run.write("me@home.txt", table + "1\t10\t0.1\t1\n");
    QCOMPARE(run.run({"keep", "scan", "me@home.txt"}).status, 5);
    QVERIFY(run.run({"keep", "scan", "me@home.txt@chr2"}).out.endsWith("rs3\t2\t10\t0.1\n"));
}

// The window shows markers that are left out of a prepared file: with p above 1, of every test.
void Cut::fileAsItStands() {
    const ToolsRun run;
    QByteArray tests = "chr\tpos\tTEST\tp\n";
    for (int i = 1; i < 200; ++i)
        tests += "1\t" + QByteArray::number(i) + "\tADD\t0.5\n1\t" + QByteArray::number(i) +
                 "\tDOM\t0.25\n";
    run.write("scan", tests + "1\t300\tADD\t2\n");
    run.write("t.txt", table + "1\t7\t0.5\t0.30103\n1\t7\t0.25\t0.60206\n1\t300\t2\t-0.30103\n");
    const ToolsRun::Result result = run.run({"keep", "scan", "t.txt"});
    QVERIFY2(result.status == 0, result.error.constData());
    QCOMPARE(result.out, QByteArray("chr\tpos\tTEST\tp\n1\t7\tADD\t0.5\n1\t7\tDOM\t0.25\n"
                                    "1\t300\tADD\t2\n"));
    QVERIFY2(result.error.contains("matched on chromosome 1, as the window reads the file"),
             result.error.constData());
    QVERIFY2(result.error.contains("Lines that no view holds: 198, left out"),
             result.error.constData());
}

QTEST_GUILESS_MAIN(Cut)
#include "tst_cut.moc"
