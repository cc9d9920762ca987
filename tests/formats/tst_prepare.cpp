#include "genome_scan.h"
#include "prepare.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

// What prepare() makes of whole tables: the rows that come out, in order, and the reason for each
// row that does not.
class Prepare : public QObject {
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void tables_data();
    void tables();
    void dropped_data();
    void dropped();
    void refused_data();
    void refused();
    void testsToChooseFrom();
    void severalInputs();
    void countsFromTheHeader();
    void windowReads();
    void preparedAgain();
    void droppedFile();
    void positionsByName_data();
    void positionsByName();

private:
    QString file(const QByteArray& content, const char* name = "in.txt") const;
    std::variant<PrepareReport, Refusal> run(const QStringList& inputs,
                                             const PrepareOptions& options, QByteArray& out) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

QString Prepare::file(const QByteArray& content, const char* name) const {
    QFile file(m_folder->filePath(QLatin1String(name)));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write a file");
    return file.fileName();
}

std::variant<PrepareReport, Refusal>
Prepare::run(const QStringList& inputs, const PrepareOptions& options, QByteArray& out) const {
    QTemporaryFile output;
    if (!output.open())
        qFatal("cannot open a file");
    const auto result = prepare({inputs, options, nullptr, [](qint64) {}}, output);
    output.seek(0);
    out = output.readAll();
    // Every row is accounted for.
    if (const auto* report = std::get_if<PrepareReport>(&result)) {
        qint64 dropped = 0;
        for (const Dropped& each : report->dropped)
            dropped += each.count;
        if (report->rows != report->written + dropped || out.count('\n') != report->written + 1)
            qFatal("%lld rows, %lld written, %lld dropped", report->rows, report->written, dropped);
    }
    return result;
}

namespace {

const QByteArray head = "Chr\tPosition\tP\t-log10(P)\n";
const QByteArray namedHead = "Chr\tPosition\tP\t-log10(P)\tSNP\n";

PrepareOptions with(const std::function<void(PrepareOptions&)>& set) {
    PrepareOptions options;
    set(options);
    return options;
}

} // namespace

Q_DECLARE_METATYPE(PrepareOptions)

void Prepare::tables_data() {
    QTest::addColumn<QByteArray>("in");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<PrepareOptions>("options");
    const auto row = [](const char* name, const QByteArray& in, const QByteArray& out,
                        const PrepareOptions& options = {}) {
        QTest::newRow(name) << in << out << options;
    };
    row("texts are copied", "CHR\tBP\tP\n1\t5\t0.0500\n1\t6\t5E-08\n1\t7\t.25\n",
        head + "1\t5\t0.0500\t1.30103\n1\t6\t5E-08\t7.30103\n1\t7\t.25\t0.60206\n");
    row("-log10 p", "CHROM GENPOS ID TEST LOG10P\n1 5 a ADD 1.5\n1 6 b ADD 400.25\n",
        "Chr\tPosition\tP\t-log10(P)\tID\n1\t5\t0.031622776601683791\t1.5\ta\n"
        "1\t6\t4.94065645841247e-324\t400.25\tb\n");
    row("p that no double holds", "CHR\tBP\tP\n1\t5\t4e-400\n1\t6\t0.1\n",
        head + "1\t5\t4.94065645841247e-324\t399.398\n1\t6\t0.1\t1\n");
    row("a bound", "CHR\tBP\tP\n1\t5\t<2e-16\n1\t6\t0.1\n",
        head + "1\t5\t2e-16\t15.699\n1\t6\t0.1\t1\n");
    row("p just above 1", "CHR\tBP\tP\n1\t5\t1.0000001\n1\t6\t1\n",
        head + "1\t5\t1\t0\n1\t6\t1\t0\n");
    row("p of 0 by the smallest", "CHR\tBP\tP\n1\t5\t0\n1\t6\t1e-9\n1\t7\t0.0\n",
        head + "1\t5\t1e-9\t9\n1\t6\t1e-9\t9\n1\t7\t1e-9\t9\n");
    row("p of 0 by its logarithm", "chr\tpos\tpval\tmlogp\n1\t5\t0\t350.5\n1\t6\t0.01\t2\n",
        head + "1\t5\t4.94065645841247e-324\t350.5\n1\t6\t0.01\t2\n");
    row("out of order", "CHR\tBP\tP\n2\t5\t0.1\n10\t1\t0.2\n2\t3\t0.3\nX\t1\t0.4\n1\t9\t0.5\n",
        head + "1\t9\t0.5\t0.30103\n2\t3\t0.3\t0.522879\n2\t5\t0.1\t1\n10\t1\t0.2\t0.69897\n"
               "X\t1\t0.4\t0.39794\n");
    row("ties stay as in the file",
        "SNP\tCHR\tBP\tP\na\t1\t5\t0.1\nb\t1\t4\t0.1\nc\t1\t5\t0.1\nd\t1\t4\t0.1\n",
        namedHead + "1\t4\t0.1\t1\tb\n1\t4\t0.1\t1\td\n1\t5\t0.1\t1\ta\n1\t5\t0.1\t1\tc\n");
    row("one spelling for each chromosome", "CHR\tBP\tP\nchr1\t5\t0.1\n1\t6\t0.1\n01\t7\t0.1\n",
        head + "chr1\t5\t0.1\t1\nchr1\t6\t0.1\t1\nchr1\t7\t0.1\t1\n");
    row("runs of spaces", " CHR   SNP   BP    P\n   1   rs1    5  0.1\n   1   rs2   16 0.01\n",
        namedHead + "1\t5\t0.1\t1\trs1\n1\t16\t0.01\t2\trs2\n");
    row("quotes", "\"SNP\",\"CHR\",\"BP\",\"P\"\n\"a,b\",\"1\",\"1,234\",\"0.1\"\n",
        namedHead + "1\t1234\t0.1\t1\ta,b\n");
    row("tabs in the name of a chromosome", "CHR,BP,P\n\"1\tb\",5,0.1\n\"1 b\",6,0.1\n",
        head + "1 b\t5\t0.1\t1\n1 b\t6\t0.1\t1\n");
    row("joined names", "variant\tpval\n1:15791:C:T\t0.1\n2:5:A:G\t0.01\n",
        "Chr\tPosition\tP\t-log10(P)\tvariant\n1\t15791\t0.1\t1\t1:15791:C:T\n"
        "2\t5\t0.01\t2\t2:5:A:G\n");
    row("positions with an exponent", "CHR\tBP\tP\n1\t1e+05\t0.1\n1\t200000.0\t0.1\n",
        head + "1\t100000\t0.1\t1\n1\t200000\t0.1\t1\n");
    const QByteArray saved = namedHead + "1\t5\t0\t310\ta\n1\t6\t0.4312\t0.365320\tb\n";
    row("a saved table, whose chromosome is told", saved,
        namedHead + "7\t5\t1e-310\t310\ta\n7\t6\t0.4312\t0.365320\tb\n",
        with([](PrepareOptions& o) { o.chromosomeValue = "7"; }));
    row("a saved table with -log10 p for p", head + "1\t5\t2\t2\n1\t6\t3\t3\n",
        head + "1\t5\t0.01\t2\n1\t6\t0.001\t3\n",
        with([](PrepareOptions& o) { o.pScale = PScale::NegLog10; }));
    row("all columns and line numbers",
        "CHR\tBP\tA1\tP\tBETA\n1\t5\tA\t0.1\t2\n\n1\t6\tC\t0.1\t3\n",
        "Chr\tPosition\tP\t-log10(P)\tA1\tBETA\tLine\n1\t5\t0.1\t1\tA\t2\t2\n"
        "1\t6\t0.1\t1\tC\t3\t4\n",
        with([](PrepareOptions& o) { o.allColumns = o.lineNumbers = true; }));
    row("a test among several",
        "CHR\tBP\tTEST\tP\n1\t5\tADD\t0.1\n1\t5\tDOM\t0.2\n1\t6\tADD\t0.3\n",
        head + "1\t5\t0.1\t1\n1\t6\t0.3\t0.522879\n");
    row("a test that is seen late", "CHR\tBP\tTEST\tP\n1\t5\tDOM\t0.1\n1\t6\tADD\t0.3\n",
        head + "1\t6\t0.3\t0.522879\n");
    row("a whole chromosome left out", "CHR\tBP\tP\n1\t5\t0.1\n1\t6\t0.1\n2\t5\t0.1\n",
        head + "1\t5\t0.1\t1\n1\t6\t0.1\t1\n", with([](PrepareOptions& o) { o.minMarkers = 2; }));
    row("25 of PLINK", "#CHROM\tPOS\tID\tOBS_CT\tP\n25\t5\ta\t9\t0.1\n23\t5\tb\t9\t0.1\n",
        "Chr\tPosition\tP\t-log10(P)\tID\nX\t5\t0.1\t1\tb\nXY\t5\t0.1\t1\ta\n",
        with([](PrepareOptions& o) { o.chromosomeNames = ChromosomeNames::Plain; }));
    row("25 of GWAS-SSF", "chromosome\tbase_pair_location\tp_value\n25\t5\t0.1\n23\t5\t0.1\n",
        head + "X\t5\t0.1\t1\nMT\t5\t0.1\t1\n",
        with([](PrepareOptions& o) { o.chromosomeNames = ChromosomeNames::Plain; }));
    row("25 of others", "CHR\tBP\tSNP\tP\n25\t5\ta\t0.1\n23\t5\tb\t0.1\n",
        namedHead + "25\t5\t0.1\t1\ta\nX\t5\t0.1\t1\tb\n",
        with([](PrepareOptions& o) { o.chromosomeNames = ChromosomeNames::Plain; }));
    row("chromosomes that get the same name are one", "CHR\tBP\tP\n23\t5\t0.1\nX\t6\t0.1\n",
        head + "X\t5\t0.1\t1\nX\t6\t0.1\t1\n", with([](PrepareOptions& o) {
            o.chromosomeNames = ChromosomeNames::Plain;
            o.minMarkers = 2;
        }));
    row("p of 0 on a small chromosome", "CHR\tBP\tP\n1\t5\t0.1\n1\t6\t0.1\n2\t5\t0\n",
        head + "1\t5\t0.1\t1\n1\t6\t0.1\t1\n", with([](PrepareOptions& o) {
            o.minMarkers = 2;
            o.zeroP = ZeroP::Fail;
        }));
    row("an empty title over values", "CHR\tBP\tP\t\n1\t5\t0.1\tx\n1\t6\t0.1\ty\n",
        head + "1\t5\t0.1\t1\n1\t6\t0.1\t1\n");
    row("an empty title over nothing", "CHR\tBP\tP\t\n1\t5\t0.1\t\n1\t6\t0.1\t\n",
        head + "1\t5\t0.1\t1\n1\t6\t0.1\t1\n",
        with([](PrepareOptions& o) { o.allColumns = true; }));
    row("no chromosome in the first row", "CHR\tBP\tP\n\t5\t0.1\n1\t6\t0.1\n",
        head + "1\t6\t0.1\t1\n");
    row("traits out of order, each marker under one",
        "CHR\tBP\tTrait\tP\n1\t7\tBMI\t0.1\n1\t6\tHDL\t0.1\n1\t5\tBMI\t0.1\n",
        head + "1\t5\t0.1\t1\n1\t6\t0.1\t1\n1\t7\t0.1\t1\n");
    row("lines too short for a name and a trait",
        "CHR\tBP\tP\tSNP\tTrait\n1\t5\t0.1\ta\tx\n1\t6\t0.1\n1\t7\t0.1\tb\ty\n",
        namedHead + "1\t5\t0.1\t1\ta\n1\t6\t0.1\t1\t\n1\t7\t0.1\t1\tb\n");
    row("lines too short for the logarithm of a p of 0",
        "CHR\tBP\tP\tINFO\n1\t5\t0\tA=1;LOG10P=400\n1\t6\t0.1\tA=1\n1\t7\t0\n",
        head + "1\t5\t4.94065645841247e-324\t400\n1\t6\t0.1\t1\n"
               "1\t7\t4.94065645841247e-324\t400\n");
    row("p with a decimal comma", "CHR;BP;P\n1;5;3,20E-08\n1;6;0,050\n",
        head + "1\t5\t3.20E-08\t7.49485\n1\t6\t0.050\t1.30103\n");
    row("a tiny p beside a logarithm of 0",
        "chr\tpos\tpval\tmlogp\n1\t5\t1e-400\t0\n1\t6\t0.01\t2\n",
        head + "1\t5\t4.94065645841247e-324\t400\n1\t6\t0.01\t2\n");
    row("a -log10 p of 0 with a decimal comma", "CHR;BP;LOG10P\n1;5;0,00\n1;6;2,5\n",
        head + "1\t5\t1\t0.00\n1\t6\t0.0031622776601683794\t2.5\n");
    row("plain names", "CHR\tBP\tP\nchr1\t5\t0.1\nchrX\t6\t0.1\n",
        head + "1\t5\t0.1\t1\nX\t6\t0.1\t1\n",
        with([](PrepareOptions& o) { o.chromosomeNames = ChromosomeNames::Plain; }));
    row("names that order the chromosomes otherwise",
        "CHR\tBP\tP\n23\t7\t0.1\nNC_000001.11\t5\t0.1\nX\t6\t0.1\n23\t5\t0.1\n",
        head + "1\t5\t0.1\t1\nX\t5\t0.1\t1\nX\t6\t0.1\t1\nX\t7\t0.1\t1\n",
        with([](PrepareOptions& o) { o.chromosomeNames = ChromosomeNames::Plain; }));
    row("Windows' line ends", "CHR\tBP\tP\r\n1\t5\t0.1\r\n1\t6\t0.1\r\n",
        head + "1\t5\t0.1\t1\n1\t6\t0.1\t1\n");
    row("bytes that are no UTF-8", "SNP\tCHR\tBP\tP\n\xe9\t1\t5\t0.1\n",
        namedHead + "1\t5\t0.1\t1\t\xe9\n");
}

void Prepare::tables() {
    QFETCH(QByteArray, in);
    QFETCH(PrepareOptions, options);
    QByteArray out;
    const auto result = run({file(in)}, options, out);
    if (const auto* refusal = std::get_if<Refusal>(&result))
        QFAIL(qPrintable(refusal->message));
    QTEST(out, "out");
    // What sorting spills to disk comes out the same.
    options.memory = 0;
    run({file(in)}, options, out);
    QTEST(out, "out");
}

void Prepare::dropped_data() {
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<char>("separator");
    const auto row = [](const QByteArray& text, const char* reason, char separator = '\t') {
        QTest::addRow("%s, %d", text.isEmpty() ? "nothing" : text.constData(), separator)
            << text << QString(reason) << separator;
    };
    for (const char* missing : {"NA", "", ".", "nan", "-nan", "NR"})
        row("rs\t1\t7\t" + QByteArray(missing) + "\t.", "p-missing");
    row("rs\t1\t7\tx\t.", "p-not-a-number");
    row("rs\t1\t7\tinf\t.", "p-not-a-number");
    row("rs\t1\t7\t1.5\t.", "p-out-of-range");
    row("rs\t1\t7\t-0.1\t.", "p-out-of-range");
    row("rs\t1\tNA\t0.1\t.", "position-missing");
    for (const char* position : {"7.5", "x"})
        row("rs\t1\t" + QByteArray(position) + "\t0.1\t.", "position-not-whole");
    row("rs\t1\t0\t0.1\t.", "position-not-positive");
    row("rs\t1\t-7\t0.1\t.", "position-not-positive");
    row("rs\t1\t2147483648\t0.1\t.", "position-too-large");
    row("rs\t1\t1e99\t0.1\t.", "position-too-large");
    for (const char* place : {"\t7", "NA\t7", "0\t0", "-9\t-9"})
        row("rs\t" + QByteArray(place) + "\t0.1\t.", "chromosome-missing");
    row("rs\t1\t7", "short-line");
    // A comma in a field without quotes shifts the fields after it, perhaps into those of p.
    for (const char separator : {',', ';'}) {
        row("rs\t1\t7\t0.1\tx\ty", "short-line", separator);
        row("rs\t1\t7\t0.1\tx\t \t", "", separator);
    }
    row("rs\t1\t7\t0.1\t\"x,y\"", "", ',');
    row("rs\t1\t7\t0.1\tx\ty", "");
    row("SNP\tCHR\tBP\tP\tX", "repeated-header");
    row("# done", "comment");
    for (const char* empty : {"\t \t\t", "", " "})
        row(empty, "empty");
}

void Prepare::dropped() {
    QFETCH(QByteArray, row);
    QFETCH(char, separator);
    QByteArray table = "SNP\tCHR\tBP\tP\tX\n";
    for (int i = 0; i < 300; ++i)
        table += "a\t1\t" + QByteArray::number(i + 1) + "\t0.5\t.\n";
    table += row + "\nb\t2\t7\t0.5\t.\n";
    QByteArray out;
    const auto result = run({file(table.replace('\t', separator))}, {}, out);
    if (const auto* refusal = std::get_if<Refusal>(&result))
        QFAIL(qPrintable(refusal->message));
    const auto& report = std::get<PrepareReport>(result);
    QStringList reasons;
    for (int reason = 0; reason < dropReasonCount; ++reason)
        if (report.dropped[static_cast<size_t>(reason)].count > 0)
            reasons << nameOf(static_cast<DropReason>(reason));
    QTEST(reasons.join(u' '), "reason");
    QCOMPARE(report.written, reasons.isEmpty() ? 302 : 301);
    for (const Dropped& each : report.dropped)
        QVERIFY(each.count == 0 || each.firstLines.first().line == 302);
}

void Prepare::refused_data() {
    QTest::addColumn<QByteArray>("in");
    QTest::addColumn<int>("code");
    QTest::addColumn<PrepareOptions>("options");
    const auto row = [](const char* name, const QByteArray& in, RefusalCode code,
                        const PrepareOptions& options = {}) {
        QTest::newRow(name) << in << static_cast<int>(code) << options;
    };
    row("a zip archive", QByteArray("PK\x03\x04\x14\x00", 6) + QByteArray(100, 'x'),
        RefusalCode::ForeignFile);
    row("a BCF file in gzip",
        QByteArray::fromHex("1f8b0800000000000203737276636262c002000143d29e19000000"),
        RefusalCode::ForeignFile);
    row("nothing but small chromosomes", "CHR\tBP\tP\n1\t5\t0.1\n2\t5\t0.1\n",
        RefusalCode::NotATable, with([](PrepareOptions& o) { o.minMarkers = 2; }));
    row("a cut gzip stream", QByteArray("\x1f\x8b\x08\x00\x00\x00\x00\x00\x00\x03\x4b", 11),
        RefusalCode::Damaged);
    row("no p-value", "CHR\tBP\tBETA\n1\t5\t0.1\n", RefusalCode::NoPValue);
    row("-log10 p under a p title", "CHR\tBP\tP\n1\t5\t3.5\n1\t6\t2.5\n1\t7\t0.5\n",
        RefusalCode::LooksLikeNegLog10);
    row("a genetic map", "CHR\tBP\tP\n1\t5.25\t0.5\n1\t6.5\t0.5\n", RefusalCode::GeneticMap);
    row("several tests",
        "CHR\tBP\tID\tTEST\tP\n1\t5\ta\tDOM\t0.1\n1\t5\ta\tREC\t0.2\n1\t6\tb\tDOM\t0.3\n",
        RefusalCode::SeveralTests);
    row("several traits, one after the other",
        "CHR\tBP\tID\tTrait\tP\n1\t5\ta\tBMI\t0.1\n1\t6\tb\tBMI\t0.2\n1\t5\ta\tHDL\t0.3\n",
        RefusalCode::SeveralTraits);
    row("p of 0", "CHR\tBP\tP\n1\t5\t0\n1\t6\t0.1\n", RefusalCode::ZeroP,
        with([](PrepareOptions& o) { o.zeroP = ZeroP::Fail; }));
    row("p of 0 alone", "CHR\tBP\tP\n1\t5\t0\n1\t6\t0\n", RefusalCode::ZeroP);
    row("commas between tabs, under titles between tabs",
        "BETA\tPOS\tCHR\tSE\tLOG10P\n1,3,5\tNA\t1\t3,2E-4\t<0,1\n1,3,5\tNA\t1\t3,2E-4\t<0,1\n",
        RefusalCode::NoPValue);
    row("no row that can be used", "CHR\tBP\tP\n1\t5\tNA\n", RefusalCode::NotATable);
    row("a column that is not there", "CHR\tBP\tP\n1\t5\t0.1\n", RefusalCode::UnknownColumn,
        with([](PrepareOptions& o) { o.p = "Q"; }));
}

void Prepare::refused() {
    QFETCH(QByteArray, in);
    QFETCH(PrepareOptions, options);
    QByteArray out;
    const auto result = run({file(in)}, options, out);
    QVERIFY(std::holds_alternative<Refusal>(result));
    const auto& refusal = std::get<Refusal>(result);
    QTEST(static_cast<int>(refusal.code), "code");
    QVERIFY(!refusal.message.isEmpty());
}

// Those of most rows first; not the places of markers that stand for their own tests.
void Prepare::testsToChooseFrom() {
    QByteArray in = "CHROM\tPOS\tTest\tPvalue\n";
    for (int i = 1; i <= 1200; ++i) {
        const QByteArray place = QByteArray::number(10 * i);
        for (const QByteArray& test : {"1:" + place, QByteArray("sex"), QByteArray("age")})
            if (i % 100 > 0 || test != "age")
                in += "1\t" + place + '\t' + test + "\t0.5\n";
    }
    QByteArray out;
    const auto refusal = std::get<Refusal>(run({file(in)}, {}, out));
    QCOMPARE(refusal.candidates, (QList<QByteArray>{"sex", "age"}));
    QCOMPARE(refusal.options, (QList<QByteArray>{"--test-name sex", "--test-name age"}));
    QVERIFY2(refusal.message.contains("more than 1000 values"), qPrintable(refusal.message));
    QVERIFY2(refusal.message.contains("names of markers"), qPrintable(refusal.message));
}

void Prepare::severalInputs() {
    const QStringList inputs{file("CHR\tBP\tP\n2\t5\t0.1\n", "chr2.txt"),
                             file("CHR\tBP\tP\n1\t5\t0.2\nx\n", "chr1.txt")};
    QByteArray out;
    const auto result = run(inputs, {}, out);
    QCOMPARE(out, head + "1\t5\t0.2\t0.69897\n2\t5\t0.1\t1\n");
    const auto& report = std::get<PrepareReport>(result);
    const Dropped& dropped = report.dropped[static_cast<size_t>(DropReason::ShortLine)];
    QCOMPARE(dropped.firstLines.first().input, 1);
    QCOMPARE(dropped.firstLines.first().line, 3);
    QVERIFY(!report.wasInOrder);
    const QString other = file("CHR\tPOS\tP\n1\t5\t0.2\n", "other.txt");
    QCOMPARE(std::get<Refusal>(run({inputs[0], other}, {}, out)).code,
             RefusalCode::DifferentColumns);
    const QString marked = file("#CHR\tBP\tP\n3\t5\t0.2\n", "marked.txt");
    QVERIFY(std::holds_alternative<PrepareReport>(run({inputs[0], marked}, {}, out)));
    QCOMPARE(out, head + "2\t5\t0.1\t1\n3\t5\t0.2\t0.69897\n");
}

// Lines between the header and the first row are accounted for, too.
void Prepare::countsFromTheHeader() {
    QByteArray out;
    const auto result = run({file("CHR\tBP\tP\n\n# note\n1\t5\t0.1\n")}, {}, out);
    QCOMPARE(std::get<PrepareReport>(result).rows, 3);
}

// The window's reader finds the same points, whatever further columns there are.
void Prepare::windowReads() {
    PrepareOptions options;
    options.allColumns = true;
    const QString in = file("rsid exposure pval_het p.value pos chr\n"
                            "a 9 0.9 0.01 200 7\nb 9 0.9 0.1 400 7\n");
    QByteArray out;
    QVERIFY(std::holds_alternative<PrepareReport>(run({in}, options, out)));
    QFile prepared(file(out, "out.txt"));
    const auto scan = scanGenome(prepared);
    QVERIFY(std::holds_alternative<GenomeScan>(scan));
    const auto& [chromosomes, points] = std::get<GenomeScan>(scan);
    QCOMPARE(chromosomes.size(), 1);
    QCOMPARE(chromosomes.first().label, QStringLiteral("7"));
    QCOMPARE(points.positions, QList<int>({1, 3}));
    QCOMPARE(points.values, QList<double>({2.0, 1.0}));
}

void Prepare::preparedAgain() {
    const QDir examples(QStringLiteral(PELMARK_EXAMPLES)), data(QStringLiteral(PELMARK_TEST_DATA));
    for (const QString& path :
         {examples.filePath("genome_100k.txt"), data.filePath("rsid_first.txt"),
          data.filePath("sorted_by_p_crlf.txt"), data.filePath("refused_bp.csv"),
          file("CHR,BP,P\n\"#1\",5,0.1\n2,6,0.1\n", "number_sign.csv")}) {
        QByteArray once, twice;
        const auto result = run({path}, {}, once);
        if (const auto* refusal = std::get_if<Refusal>(&result))
            QFAIL(qPrintable(path + ": " + refusal->message));
        QVERIFY(std::holds_alternative<PrepareReport>(run({file(once, "once.txt")}, {}, twice)));
        QCOMPARE(twice, once);
    }
}

void Prepare::droppedFile() {
    QTemporaryFile output, dropped;
    QVERIFY(output.open() && dropped.open());
    const QString in = file("CHR\tBP\tP\n1\t5\tNA\n1\t6\t0.1\n1\tx y\t0.1\n");
    prepare({{in}, {}, &dropped, [](qint64) {}}, output);
    dropped.seek(0);
    QCOMPARE(dropped.readAll(), "p-missing\t2\t1\t5\tNA\nposition-not-whole\t4\t1\tx y\t0.1\n");
}

void Prepare::positionsByName_data() {
    QTest::addColumn<QByteArray>("positions");
    QTest::newRow("bim") << QByteArray("1\ta\t0\t500\tA\tC\n2\tb\t0.5\t70\tA\tG\n");
    QTest::newRow("map") << QByteArray("1 a 0 500\n2  b 0.5 70\n");
    QTest::newRow("pvar") << QByteArray("##x\n#CHROM\tPOS\tID\tREF\tALT\n1\t500\ta\tA\tC\n"
                                        "2\t70\tb\tA\tG\n1\t9\tb\tA\tG\n");
    QTest::newRow("a table") << QByteArray("SNP,BP,CHR\nb,70,2\na,500,1\n");
    QTest::newRow("too large") << QByteArray("SNP,BP,CHR\nb,70,2\na,500,1\nc,2147483648,1\n");
}

void Prepare::positionsByName() {
    QFETCH(QByteArray, positions);
    PrepareOptions options;
    options.positionsFile = file(positions, "positions");
    QByteArray out;
    const auto result = run({file("SNP\tP\nb\t0.1\nc\t0.1\na\t0.01\n")}, options, out);
    if (const auto* refusal = std::get_if<Refusal>(&result))
        QFAIL(qPrintable(refusal->message));
    QCOMPARE(out, namedHead + "1\t500\t0.01\t2\ta\n2\t70\t0.1\t1\tb\n");
    const auto& report = std::get<PrepareReport>(result);
    QCOMPARE(report.dropped[static_cast<size_t>(DropReason::NoPositionInTable)].count, 1);
    options.positionsFile = file("a,b\n1,2\n", "none");
    const auto refused = run({file("SNP\tP\nb\t0.1\n")}, options, out);
    QCOMPARE(std::get<Refusal>(refused).code, RefusalCode::NotPositions);
}

QTEST_GUILESS_MAIN(Prepare)
#include "tst_prepare.moc"
