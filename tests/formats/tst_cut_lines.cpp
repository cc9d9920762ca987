#include "line_copy.h"
#include "marker_choice.h"
#include "table_match.h"
#include "window_markers.h"

#include <QBuffer>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

// Which lines of a result file saved tables, regions and names mean, and how lines are copied.
class CutLines : public QObject {
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void matches_data();
    void matches();
    void misfits_data();
    void misfits();
    void zeroDropped();
    void tablesAreMatchedEachForItself();
    void savedTables_data();
    void savedTables();
    void regions_data();
    void regions();
    void linesOfRegions_data();
    void linesOfRegions();
    void names_data();
    void names();
    void namesNeedAColumn();
    void windowMarkers_data();
    void windowMarkers();
    void markersOfManyLabels();
    void copies_data();
    void copies();
    void copiesPreparedTables();
    void copiesLongLines();

private:
    QString file(const QByteArray& content, const char* name = "scan.txt") const {
        QFile file(m_folder->filePath(QLatin1String(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write a file");
        return file.fileName();
    }
    ScanTable scanOf(const QByteArray& content, const PrepareOptions& options = {}) const {
        auto scan = readScanTable(file(content), options);
        if (const auto* refusal = std::get_if<Refusal>(&scan))
            qFatal("%s", qPrintable(refusal->message));
        return std::get<ScanTable>(std::move(scan));
    }
    WantedTable wanted(const QByteArray& rows, std::optional<QByteArray> label = {}) const {
        auto table = readSavedTable(file("Chr\tPosition\tP\t-log10(P)\n" + rows, "table.txt"));
        if (const auto* refusal = std::get_if<Refusal>(&table))
            qFatal("%s", qPrintable(refusal->message));
        return {std::get<SavedTable>(std::move(table)), std::move(label)};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

using Lines = QList<qint64>;

Lines listOf(const std::vector<qint64>& lines) {
    return {lines.begin(), lines.end()};
}

const QByteArray two = "chr\tpos\tp\n"
                       "1\t10\t0.1\n1\t20\t0.5\n1\t30\t0.25\n"
                       "2\t10\t0.1\n2\t20\t0.125\n2\t30\t0.25\n";

} // namespace

void CutLines::matches_data() {
    QTest::addColumn<QByteArray>("scan");
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QByteArray>("chromosome");
    QTest::addColumn<Lines>("lines");
    QTest::addColumn<qint64>("equal");

    const auto row = [](const char* name, const QByteArray& scan, const char* rows,
                        const char* chromosome, const Lines& lines, qint64 equal = 0) {
        QTest::newRow(name) << scan << QByteArray(rows) << QByteArray(chromosome) << lines << equal;
    };
    const QByteArray head = "chr\tpos\tp\n";
    row("one row", two, "1\t20\t0.5\t0.30103\n", "1", {3});
    row("the label does not count", two, "1\t20\t0.125\t0.90309\n", "2", {6});
    row("all rows decide", two, "1\t10\t0.1\t1\n1\t20\t0.125\t0.90309\n", "2", {5, 6});
    row("rows in any order", two, "1\t20\t0.125\t0.90309\n1\t10\t0.1\t1\n", "2", {5, 6});
    row("empty lines", two, "\n1\t20\t0.5\t0.30103\n\n", "1", {3});
    row("no rows", two, "", "", {});
    row("named as often as there", head + "1\t10\t0.1\n1\t10\t0.1\n1\t20\t0.5\n",
        "1\t10\t0.1\t1\n1\t10\t0.1\t1\n", "1", {2, 3});
    row("more are there than named", head + "1\t10\t0.1\n1\t10\t0.1\n1\t10\t0.1\n1\t20\t0.5\n",
        "1\t10\t0.1\t1\n1\t10\t0.1\t1\n1\t20\t0.5\t0.30103\n", "1", {2, 3, 5}, 2);
    row("a count decides", head + "1\t10\t0.1\n2\t10\t0.1\n2\t10\t0.1\n",
        "1\t10\t0.1\t1\n1\t10\t0.1\t1\n", "2", {3, 4});
    row("same place, other p", head + "1\t10\t0.1\n1\t10\t0.5\n1\t20\t0.5\n",
        "1\t10\t0.5\t0.30103\n", "1", {3});
    row("out of order", head + "2\t10\t0.1\n1\t30\t0.5\n1\t10\t0.1\n1\t30\t0.5\n",
        "1\t30\t0.5\t0.30103\n", "1", {3}, 1);
    row("six digits alone are seen", head + "1\t10\t0.43120004\n1\t20\t0.5\n",
        "1\t10\t0.4312\t0.365321\n", "1", {2});
    row("p of 1", head + "1\t10\t1\n1\t20\t0.5\n", "1\t10\t1\t0\n", "1", {2});
    row("p too small to print", head + "1\t10\t1e-310\n1\t20\t0.5\n", "1\t10\t0\t310\n", "1", {2});
    row("p too small for a double", head + "1\t10\t1e-400\n1\t20\t0.5\n", "1\t10\t0\t323.306\n",
        "1", {2});
    row("p of 0 as the smallest", head + "1\t10\t0\n1\t20\t0.5\n1\t30\t0.001\n",
        "1\t10\t0.001\t3\n", "1", {2});
    row("-log10 p", "chr\tpos\tlog10p\n1\t10\t7.30103\n1\t20\t1\n", "1\t10\t5e-08\t7.30103\n", "1",
        {2});
    row("no p beside it", head + "1\t10\tNA\n1\t10\t0.1\n1\t10\tNA\n", "1\t10\t0.1\t1\n", "1", {3});
    row("another test", "chr\tpos\ttest\tp\n1\t10\tDOM\t0.1\n1\t10\tADD\t0.1\n1\t20\tADD\t0.5\n",
        "1\t10\t0.1\t1\n", "1", {3});
    row("comments and lines before", "# made\n" + head + "# then\n1\t10\t0.1\n", "1\t10\t0.1\t1\n",
        "1", {4});
}

void CutLines::matches() {
    QFETCH(QByteArray, scan);
    QFETCH(QByteArray, rows);
    const ScanTable table = scanOf(scan);
    const TableMatch match = matchTables(table, {wanted(rows)})[0];
    QVERIFY(!match.missing);
    QTEST(match.chromosome, "chromosome");
    QTEST(listOf(match.lines), "lines");
    QTEST(match.equal, "equal");
    QCOMPARE(match.fitting.size(), match.lines.empty() ? 0 : 1);
}

void CutLines::misfits_data() {
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QByteArray>("label"); // null for none
    QTest::addColumn<QByteArrayList>("fitting");
    QTest::addColumn<QByteArray>("chromosome"); // with the most rows
    QTest::addColumn<int>("missing");           // row; -1 for none

    const auto row = [](const char* name, const char* rows, const char* label,
                        const QByteArrayList& fitting, const char* chromosome, int missing) {
        QTest::newRow(name) << QByteArray(rows) << QByteArray(label) << fitting
                            << QByteArray(chromosome) << missing;
    };
    row("two fit", "1\t10\t0.1\t1\n", nullptr, {"1", "2"}, "1", -1);
    row("the label decides", "1\t10\t0.1\t1\n", "2", {"2"}, "2", -1);
    row("another spelling of it", "1\t10\t0.1\t1\n", "chr2", {"2"}, "2", -1);
    row("the label is wrong", "1\t20\t0.5\t0.30103\n", "2", {}, "", 0);
    row("other position", "1\t11\t0.1\t1\n", nullptr, {}, "", 0);
    row("other p", "1\t10\t0.1\t1\n1\t20\t0.4\t0.39794\n", nullptr, {}, "1", 1);
    row("other text", "1\t10\t0.10\t1\n", nullptr, {}, "", 0);
    row("other -log10 p", "1\t10\t0.1\t1.1\n", nullptr, {}, "", 0);
    row("more often than there", "1\t30\t0.25\t0.60206\n1\t20\t0.5\t0.30103\n1\t20\t0.5\t0.30103\n",
        nullptr, {}, "1", 2);
    row("the better of two", "1\t20\t0.125\t0.90309\n1\t99\t0.1\t1\n1\t10\t0.1\t1\n", nullptr, {},
        "2", 1);
}

void CutLines::misfits() {
    QFETCH(QByteArray, rows);
    QFETCH(QByteArray, label);
    const ScanTable table = scanOf(two);
    const auto given = label.isNull() ? std::nullopt : std::optional(label);
    const TableMatch match = matchTables(table, {wanted(rows, given)})[0];
    QTEST(QByteArrayList(match.fitting), "fitting");
    QTEST(match.chromosome, "chromosome");
    QTEST(match.missing ? static_cast<int>(*match.missing) : -1, "missing");
}

void CutLines::zeroDropped() {
    PrepareOptions options;
    options.zeroP = ZeroP::Drop;
    const ScanTable scan = scanOf("chr\tpos\tp\n1\t10\t0\n1\t10\t0.001\n", options);
    const TableMatch match = matchTables(scan, {wanted("1\t10\t0.001\t3\n")})[0];
    QCOMPARE(listOf(match.lines), Lines{3});
    QCOMPARE(match.equal, 0);
}

void CutLines::tablesAreMatchedEachForItself() {
    const ScanTable scan = scanOf(two);
    const auto matches = matchTables(scan, {wanted("1\t20\t0.5\t0.30103\n"),
                                            wanted("1\t20\t0.125\t0.90309\n1\t30\t0.25\t0.60206\n"),
                                            wanted("1\t20\t0.5\t0.30103\n1\t30\t0.25\t0.60206\n")});
    QCOMPARE(listOf(matches[0].lines), Lines{3});
    QCOMPARE(listOf(matches[1].lines), (Lines{6, 7}));
    QCOMPARE(listOf(matches[2].lines), (Lines{3, 4}));
}

void CutLines::savedTables_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("rows"); // -1: refused
    QTest::addColumn<qint64>("line");

    const QByteArray head = "Chr\tPosition\tP\t-log10(P)\n", row = "1\t10\t0.1\t1\n";
    const auto add = [](const char* name, const QByteArray& content, int rows, qint64 line) {
        QTest::newRow(name) << content << rows << line;
    };
    add("as written", head + row + row, 2, 3);
    add("titles alone", head, 0, 0);
    add("through a spreadsheet", "\xEF\xBB\xBF" + QByteArray(head + row).replace("\n", "\r\n"), 1,
        2);
    add("no line feed at the end", head + "1\t10\t0.1\t1", 1, 2);
    add("an odd label", head + "my label,\"\t10\t0.1\t1\n", 1, 2);
    add("not a number", head + "1\t10\tnan\tnan\n", 1, 2);
    add("below 0", head + "1\t-10\t2\t-0.30103\n", 1, 2);
    add("empty", "", -1, 1);
    add("other titles", "chr\tpos\tp\n1\t10\t0.1\n", -1, 1);
    add("prepared, with names", "Chr\tPosition\tP\t-log10(P)\tSNP\n1\t10\t0.1\t1\trs1\n", -1, 1);
    add("a short row", head + row + "1\t10\t0.1\n", -1, 3);
    add("a long row", head + "1\t10\t0.1\t1\t2\n", -1, 2);
    add("no position", head + "1\tx\t0.1\t1\n", -1, 2);
    add("no p", head + row + row + "1\t10\tx\t1\n", -1, 4);
}

void CutLines::savedTables() {
    QFETCH(QByteArray, content);
    QFETCH(int, rows);
    const auto read = readSavedTable(file(content));
    const auto* table = std::get_if<SavedTable>(&read);
    QCOMPARE(table ? static_cast<int>(table->rows.size()) : -1, rows);
    if (const auto* refusal = std::get_if<Refusal>(&read))
        QTEST(refusal->line, "line");
    else
        QTEST(rows > 0 ? table->rows.back().line : 0, "line");
}

void CutLines::regions_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("read"); // empty for none

    const auto row = [](const char* text, const char* read) {
        QTest::newRow(text) << QByteArray(text) << QByteArray(read);
    };
    row("12:2330458-2331000", "12 2330458 2331000");
    row("12:2,330,458-2,331,000", "12 2330458 2331000");
    row("X:5-5", "X 5 5");
    row("HLA:A*01:1-1,000", "HLA:A*01 1 1000");
    row("scaffold-3:999-1,000", "scaffold-3 999 1000");
    row("1:1-2147483647", "1 1 2147483647");
    for (const char* wrong : {"12",
                              "12:",
                              ":1-2",
                              "12:5",
                              "12:-5",
                              "12:5-",
                              "12:6-5",
                              "12:0-5",
                              "12:1,00-500",
                              "12:1-,100",
                              "12:1000,000-2000000",
                              "12:1,0000-20000",
                              "12:1,000000-2,000,000",
                              "12:a-b",
                              "1:1-2147483648",
                              "12:1.5-3",
                              "12:+1-3",
                              "12: 1-3",
                              "12:1--3",
                              ""})
        row(wrong, "");
}

void CutLines::regions() {
    QFETCH(QByteArray, text);
    const auto region = readRegion({text.constData(), static_cast<size_t>(text.size())});
    QTEST(region ? region->label + ' ' + QByteArray::number(region->first) + ' ' +
                       QByteArray::number(region->last)
                 : QByteArray(""),
          "read");
}

void CutLines::linesOfRegions_data() {
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<Lines>("lines"); // {-1}: no such chromosome
    QTest::newRow("both ends") << QByteArray("2") << 10 << 20 << Lines{3, 2};
    QTest::newRow("between") << QByteArray("2") << 11 << 19 << Lines{};
    QTest::newRow("all") << QByteArray("1") << 1 << INT_MAX << Lines{5, 4, 6};
    QTest::newRow("several there") << QByteArray("1") << 20 << 20 << Lines{4, 6};
    QTest::newRow("spelled otherwise") << QByteArray("chr1") << 1 << 10 << Lines{5};
    QTest::newRow("unknown") << QByteArray("3") << 1 << 10 << Lines{-1};
}

void CutLines::linesOfRegions() {
    QFETCH(QByteArray, label);
    QFETCH(int, first);
    QFETCH(int, last);
    const ScanTable scan =
        scanOf("chr\tpos\tp\n2\t20\t0.1\n2\t10\t0.1\n1\t20\t0.1\n1\t10\t0.1\n1\t20\t0.2\n");
    const auto chromosome = chromosomeOf(scan, label);
    QTEST(chromosome ? listOf(linesIn(scan, *chromosome, {label, first, last})) : Lines{-1},
          "lines");
}

void CutLines::names_data() {
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<Lines>("lines");
    QTest::addColumn<QByteArrayList>("notFound");
    QTest::newRow("some") << QByteArray("rs3\nrs1\n") << Lines{2, 4} << QByteArrayList();
    QTest::newRow("ends and spaces")
        << QByteArray("\r\n rs3 \r\n\r\nrs1") << Lines{2, 4} << QByteArrayList();
    QTest::newRow("several lines") << QByteArray("rs2\n") << Lines{3, 6} << QByteArrayList();
    QTest::newRow("named twice") << QByteArray("rs1\nrs1\n") << Lines{2} << QByteArrayList();
    QTest::newRow("not there") << QByteArray("rs\nrs9\nrs1\n") << Lines{2}
                               << QByteArrayList{"rs", "rs9"};
    QTest::newRow("without p") << QByteArray("rs5\n") << Lines{} << QByteArrayList{"rs5"};
}

void CutLines::names() {
    QFETCH(QByteArray, list);
    const QByteArray content = "snp,chr,pos,p\nrs1,2,10,0.1\nrs2,1,20,0.1\n\"rs3\",1,10,0.5\n"
                               "rs5,1,30,NA\nrs2,1,20,0.2\n";
    const ScanTable scan = scanOf(content);
    const auto read = readNames(file(list, "list.txt"));
    const auto matched =
        matchNames(file(content), scan, {{"rs1"}, std::get<QList<QByteArray>>(read)});
    const auto& matches = std::get<std::vector<NameMatch>>(matched);
    QCOMPARE(listOf(matches[0].lines), Lines{2});
    QTEST(listOf(matches[1].lines), "lines");
    QTEST(QByteArrayList(matches[1].notFound), "notFound");
}

void CutLines::namesNeedAColumn() {
    const auto matched = matchNames(file(two), scanOf(two), {{"rs1"}});
    QVERIFY(std::get<Refusal>(matched).message.contains(QStringLiteral("--name COLUMN")));
}

void CutLines::windowMarkers_data() {
    QTest::addColumn<QByteArray>("scan");
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<Lines>("lines");

    const auto row = [](const char* name, const QByteArray& scan, const char* rows,
                        const Lines& lines) {
        QTest::newRow(name) << scan << QByteArray(rows) << lines;
    };
    const QByteArray head = "chr\tpos\tp\n";
    row("p above 1", head + "1\t10\t2\n1\t20\t0.1\n", "1\t10\t2\t-0.30103\n", {2});
    row("p below 0", head + "1\t10\t-1\n1\t20\t0.1\n", "1\t10\tnan\tnan\n", {2});
    row("position of 0", head + "1\t0\t0.1\n1\t-5\t0.1\n", "1\t-5\t0.1\t1\n", {3});
    row("every test", "chr\tpos\ttest\tp\n1\t10\tDOM\t0.1\n1\t10\tADD\t0.1\n",
        "1\t10\t0.1\t1\n1\t10\t0.1\t1\n", {2, 3});
    row("first stretch alone", head + "1\t10\t0.1\n2\t10\t0.5\n1\t10\t0.1\n", "1\t10\t0.1\t1\n",
        {2});
    row("after lines of no p", head + "\n1\t10\tNA\n1\t20\t0\n1\t30\t0.1\n", "1\t30\t0.1\t1\n",
        {5});
}

void CutLines::windowMarkers() {
    QFETCH(QByteArray, scan);
    QFETCH(QByteArray, rows);
    const auto markers = readWindowMarkers(file(scan));
    QVERIFY(markers);
    const TableMatch match = matchTables(*markers, {wanted(rows)})[0];
    QVERIFY(!match.missing);
    QCOMPARE(match.fitting.size(), 1);
    QTEST(listOf(match.lines), "lines");
    QVERIFY(!readWindowMarkers(file("chr\tpos\tq\n1\t10\t0.1\n")));
    QVERIFY(!readWindowMarkers(file("chr\tpos\tp\n1\t10\t0.1\n1\t10\tx\n")));
}

// They are names of markers then.
void CutLines::markersOfManyLabels() {
    constexpr int most = 100'000;
    QByteArray scan("chr\tpos\tp\n");
    for (int i = 0; i < most; ++i)
        scan += 'a' + QByteArray::number(i) + "\t5\t0.1\n";
    QVERIFY(readWindowMarkers(file(scan)));
    QVERIFY(!readWindowMarkers(file(scan + "b\t5\t0.1\n")));
}

void CutLines::copies_data() {
    QTest::addColumn<QByteArray>("in");
    QTest::addColumn<Lines>("lines");
    QTest::addColumn<QByteArray>("kept");
    QTest::addColumn<QByteArray>("rest");

    const auto row = [](const char* name, const QByteArray& in, const Lines& lines,
                        const QByteArray& kept, const QByteArray& rest) {
        QTest::newRow(name) << in << lines << kept << rest;
    };
    const QByteArray text = "h\na\nb\nc\n", mark = "\xEF\xBB\xBF";
    row("some", text, {2, 4}, "h\na\nc\n", "h\nb\n");
    row("none", text, {}, "h\n", text);
    row("all", text, {2, 3, 4}, text, "h\n");
    row("no line feed at the end", "h\na\nb", {2}, "h\na\n", "h\nb");
    row("the last line, without one", "h\na\nb", {3}, "h\nb", "h\na\n");
    row("carriage returns", "h\r\na\r\nb\nc\r\r\n", {2, 4}, "h\r\na\r\nc\r\r\n", "h\r\nb\n");
    row("lone carriage returns", "h\ra\rb\r", {2}, "h\ra\r", "h\rb\r");
    row("lone ones in a line", "h\na\rb\nc\n", {2}, "h\na\rb\n", "h\nc\n");
    row("comments", "h\na\n#x\nb\n#y", {2}, "h\na\n#x\n#y", "h\n#x\nb\n#y");
    row("headers that come back", "h\r\na\nh\nb\nhh\n", {2}, "h\r\na\nh\n", "h\r\nh\nb\nhh\n");
    row("empty lines", "h\n\na\n\n\n", {3}, "h\na\n", "h\n\n\n\n");
    row("mark", mark + text, {3}, mark + "h\nb\n", mark + "h\na\nc\n");
    row("bytes of no encoding", "h\na\xFF\xFE\nb\0c\n\xC3", {2}, "h\na\xFF\xFE\n",
        QByteArray("h\nb", 3));
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE,
                                QStringConverter::Utf32LE, QStringConverter::Utf32BE}) {
        const auto wide = [encoding](const QString& all) {
            return QByteArray(
                QStringEncoder(encoding, QStringConverter::Flag::WriteBom).encode(all));
        };
        const char* const name = QStringConverter::nameForEncoding(encoding);
        // The bytes of line feeds and number signs stand in the other characters too.
        const QString odd = QStringLiteral("\u0A0A\u0A23\u230A\u000D");
        row(name, wide("h\n" + odd + "\nb\n#\nh\r\nc"), {2}, wide("h\n" + odd + "\n#\nh\r\n"),
            wide("h\nb\n#\nh\r\nc"));
        row((QByteArray(name) + " with returns").constData(), wide("h\ra\r#\rb"), {2},
            wide("h\ra\r#\r"), wide("h\r#\rb"));
    }
}

void CutLines::copies() {
    QFETCH(QByteArray, in);
    QFETCH(Lines, lines);
    const QString path = file(in);
    TableFormat format;
    format.headerLine = 1;
    format.firstDataLine = 2;
    for (const bool areKept : {true, false}) {
        QBuffer out;
        out.open(QIODevice::WriteOnly);
        QVERIFY(!copyLines(path, format, {{lines.begin(), lines.end()}, areKept}, out));
        QTEST(out.data(), areKept ? "kept" : "rest");
    }
}

// A number sign then begins a chromosome's name.
void CutLines::copiesPreparedTables() {
    TableFormat format;
    format.headerLine = 1;
    format.firstDataLine = 2;
    format.hasComments = false;
    const QString path = file("h\n#a\n#b\n");
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    QVERIFY(!copyLines(path, format, {{2}, true}, out));
    QCOMPARE(out.data(), "h\n#a\n");
}

// Longer than the blocks that are read, the first one too.
void CutLines::copiesLongLines() {
    constexpr qsizetype longest = 700'000;
    QByteArrayList text{QByteArray(longest, 'h') + '\n'};
    for (int i = 0; i < 60; ++i)
        text.append(QByteArray(i % 7 == 0 ? longest - i : i, 'a') + '\n');
    TableFormat format;
    format.headerLine = 1;
    format.firstDataLine = 2;
    const QString path = file(text.join());
    for (qint64 line = 2; line <= text.size(); line += 3) {
        QByteArrayList rest = text;
        const QByteArray kept = rest.takeAt(line - 1);
        QBuffer out[2];
        for (const bool areKept : {false, true}) {
            out[areKept].open(QIODevice::WriteOnly);
            QVERIFY(!copyLines(path, format, {{line}, areKept}, out[areKept]));
        }
        QVERIFY(out[false].data() == rest.join());
        QVERIFY(out[true].data() == text[0] + kept);
    }
}

QTEST_GUILESS_MAIN(CutLines)
#include "tst_cut_lines.moc"
