#include "input_file.h"
#include "quick_scan.h"
#include "scan_table.h"
#include "support/random.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The quick way into memory, held against the way by prepare().
class ScanTables : public QObject {
    Q_OBJECT

private slots:
    void kinds_data();
    void kinds();
    void randomTables();
    void visitsLines();
    void visitsLinesFarApart_data();
    void visitsLinesFarApart();
    void refusesAFileThatChanged();

private:
    QString write(const QByteArray& text) const;

    const QTemporaryDir m_folder;
};

namespace {

std::optional<ScanTable> quickly(const QString& path, const PrepareOptions& options = {}) {
    const auto understood = understandFiles({path}, options);
    const auto* tables = std::get_if<QList<Understanding>>(&understood);
    return tables ? quickScan(path, tables->first(), options, [](qint64) {}) : std::nullopt;
}

QByteArray textOf(const ScanTable& scan) {
    QByteArray text = QByteArray::number(scan.report.rows) + " rows " +
                      QByteArray::number(scan.report.written) + " written\n";
    for (const Dropped& dropped : scan.report.dropped) {
        text += QByteArray::number(dropped.count) + ':';
        for (const InputLine& line : dropped.firstLines)
            text += ' ' + QByteArray::number(line.line);
        text += '\n';
    }
    for (const ChromosomeCount& chromosome : scan.report.chromosomes)
        text += chromosome.name + ' ' + QByteArray::number(chromosome.markers) + '\n';
    for (const ScanTable::Chromosome& chromosome : scan.chromosomes)
        for (size_t row = chromosome.begin; row < chromosome.end; ++row)
            text += chromosome.name + ' ' + QByteArray::number(scan.position(row)) + ' ' +
                    QByteArray::number(scan.value(row), 'g', 17) + ' ' +
                    QByteArray::number(scan.negLog10(row), 'g', 17) + ' ' +
                    QByteArray::number(scan.lines[row]) + '\n';
    return text;
}

QByteArray randomTable(Random& random) {
    const char delimiter = random.oneOf({'\t', '\t', ','});
    const bool isOdd = random.oneIn(2);
    QByteArray text = random.oneIn(4) ? "# made by a tool\n" : "";
    text += QByteArray("chr|pos|p|id").replace('|', delimiter) + '\n';
    int chromosome = 1, position = 1;
    for (int row = random.between(1, 60); row > 0; --row) {
        chromosome += random.oneIn(10) ? 1 : 0;
        position = random.oneIn(20) ? random.between(1, 1000) : position + random.below(100);
        if (chromosome > 1 && random.oneIn(10))
            position = 1;
        QByteArray label = QByteArray::number(chromosome),
                   p = QByteArray::number(random.fraction());
        QByteArray place = QByteArray::number(position), name = "rs" + place;
        if (random.oneIn(8))
            p = random.oneOf({"NA", "", ".", "1", "1e-300", ".0123"});
        if (isOdd && random.oneIn(20)) {
            p = random.oneOf({"0", "1e-310", "1e-400", "<1e-9", "2", "-1", "x", "inf", "nan", "1"});
            label = random.oneOf({"chr1", "0", "NA", "", "01", "X", "MT"});
            place = random.oneOf({"0", "1.5", "1e5", "", "NA", "-4", "99999999999", "2147483647"});
            name = random.oneOf({"a b", "\"q\"", " c", ""});
        }
        QByteArray line = label + delimiter + place + delimiter + p + delimiter + name;
        if (isOdd && random.oneIn(30))
            line = random.oneOf({"", "#", "1", "chr"});
        text += line + '\n';
    }
    return text;
}

} // namespace

QString ScanTables::write(const QByteArray& text) const {
    QFile file(m_folder.filePath("table"));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write");
    return file.fileName();
}

void ScanTables::kinds_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isQuick");
    const auto row = [](const char* name, const QByteArray& text, bool isQuick) {
        QTest::newRow(name) << text << isQuick;
    };
    const char* const start = "chr\tpos\tp\n1\t5\t0.1\n1\t5\t.2\n2\t3\t1e-5\n";
    const auto with = [&](const char* name, const char* line, bool isQuick) {
        QTest::newRow(name) << QByteArray(start) + line + '\n' << isQuick;
    };
    row("plain", start, true);
    row("commas", "chr,pos,p value\n1,5,0.1\n1,6,0.1\n", true);
    row("a saved table", "Chr\tPosition\tP\t-log10(P)\n1\t5\t0.1\t1\n1\t6\t0.1\t1\n", true);
    const auto longLine = [&](const char* name, char separator, const QByteArray& end,
                              bool isQuick) {
        const QByteArray text = "chr,pos,p,name\n" + QByteArray("1,5,0.1,a\n").repeated(20) + end;
        row(name, QByteArray(text).replace(',', separator) + '\n', isQuick);
    };
    longLine("a comma in a field", ',', "1,6,0.1,a,b", false);
    longLine("a semicolon in a field", ';', "1,6,0.1,a,b", false);
    longLine("a field after the last title between tabs", '\t', "1,6,0.1,a,b", true);
    with("a missing p", "2\t9\tNA", true);
    with("spaces between columns", "2 9 0.1", false);
    with("a p of 0", "2\t9\t0", false);
    with("p below the normal doubles", "2\t9\t1e-310", false);
    with("p above 1", "2\t9\t1.0000001", false);
    with("out of order", "2\t2\t0.1", false);
    with("a chromosome that returns", "1\t9\t0.1", false);
    with("another spelling", "chr2\t9\t0.1", false);
    with("a comment", "# the end", false);
    row("a comment below the header", "chr\tpos\tp\n# rows\n1\t5\t0.1\n1\t6\t0.2\n", false);
    row("comments above the header", QByteArray("## a b\n## c \"d\"\n") + start, true);
    with("an empty line", "", false);
    with("a quote", "\"2\"\t9\t0.1", false);
    row("-log10 p", "chr\tpos\tlog10p\n1\t5\t0.1\n1\t6\t3\n", false);
    row("a name that holds the place", "snp\tp\n1:5:A:C\t0.1\n1:6:A:C\t0.1\n", false);
}

void ScanTables::kinds() {
    QFETCH(const QByteArray, text);
    QFETCH(const bool, isQuick);
    const QString path = write(text);
    const auto quick = quickly(path);
    QCOMPARE(quick.has_value(), isQuick);
    const auto prepared = preparedScan(path, {}), read = readScanTable(path, {});
    const auto* table = std::get_if<ScanTable>(&read);
    QCOMPARE(table != nullptr, std::holds_alternative<ScanTable>(prepared));
    if (table)
        QCOMPARE(textOf(*table), textOf(std::get<ScanTable>(prepared)));
}

void ScanTables::randomTables() {
    Random random(runSeed());
    int taken = 0;
    const int cases = randomCases(500);
    for (int i = 0; i < cases; ++i) {
        const QByteArray text = randomTable(random);
        const QString path = write(text);
        const auto quick = quickly(path);
        if (!quick)
            continue;
        ++taken;
        const auto prepared = preparedScan(path, {});
        QVERIFY2(std::holds_alternative<ScanTable>(prepared), text);
        QVERIFY2(textOf(*quick) == textOf(std::get<ScanTable>(prepared)), text);
    }
    QVERIFY(taken > cases / 20);
}

void ScanTables::visitsLines() {
    const QString path = write("chr\tpos\tp\n1\t5\t0.1\n1\t6\t0.2\n2\t3\t0.3\n");
    const auto read = readScanTable(path, {});
    const auto& scan = std::get<ScanTable>(read);
    QByteArrayList seen;
    const auto note = [&](size_t i, const TableRows& rows) {
        const std::string_view p = rows.field(2);
        seen.append(QByteArray::number(static_cast<int>(i)) + ' ' +
                    QByteArray(p.data(), static_cast<qsizetype>(p.size())));
    };
    QVERIFY(!visitLines(path, scan, {2, 4}, note));
    QCOMPARE(seen, QByteArrayList({"0 0.1", "1 0.3"}));
}

void ScanTables::visitsLinesFarApart_data() {
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("lineEnd");
    QTest::addColumn<bool>("isPacked");
    QTest::newRow("plain") << QByteArray() << QByteArray("\n") << false;
    QTest::newRow("carriage returns") << QByteArray() << QByteArray("\r\n") << false;
    QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF") << QByteArray("\n") << false;
    QTest::newRow("old line ends") << QByteArray() << QByteArray("\r") << false;
    QTest::newRow("packed") << QByteArray() << QByteArray("\n") << true;
}

// Each line holds its number, in a file of many blocks. One line ends as on Windows.
void ScanTables::visitsLinesFarApart() {
    QFETCH(const QByteArray, start);
    QFETCH(const QByteArray, lineEnd);
    QFETCH(const bool, isPacked);
    constexpr int count = 40'000;
    QByteArray text = start + "chr\tpos\tp\tname" + lineEnd;
    for (int line = 2; line <= count; ++line)
        text += "1\t" + QByteArray::number(line) + "\t0.5\t" + QByteArray::number(line) +
                QByteArray(line % 13, 'x') + (line == count / 2 && lineEnd == "\n" ? "\r" : "") +
                lineEnd;
    const QString path = write(text);
    if (isPacked) {
        QCOMPARE(QProcess::execute("gzip", {"-kf", path}), 0);
        QVERIFY(QFile::remove(path) && QFile::rename(path + ".gz", path));
    }
    const auto read = readScanTable(path, {});
    const auto& scan = std::get<ScanTable>(read);
    Random random(runSeed());
    for (const int step : {3, 100, 2'000, 30'000}) {
        std::vector<qint64> lines;
        for (int line = random.between(2, step + 1); line <= count; line += random.between(1, step))
            lines.push_back(line);
        std::vector<qint64> seen;
        const auto note = [&](size_t, const TableRows& rows) {
            const std::string_view name = rows.field(3);
            seen.push_back(QByteArray(name.data(), std::ssize(name)).replace("x", "").toLongLong());
        };
        QVERIFY(!visitLines(path, scan, lines, note));
        QVERIFY(seen == lines);
    }
}

void ScanTables::refusesAFileThatChanged() {
    const QByteArray text = "chr\tpos\tp\n1\t5\t0.1\n1\t6\t0.2\n";
    const QString path = write(text);
    const auto read = readScanTable(path, {});
    for (const QByteArray& changed : {text.left(text.size() - 8), text.chopped(5)}) {
        write(changed);
        const auto refusal = visitLines(path, std::get<ScanTable>(read), {3},
                                        [](size_t, const TableRows&) { QFAIL("visited"); });
        QVERIFY(refusal && refusal->code == RefusalCode::Unreadable);
    }
}

QTEST_GUILESS_MAIN(ScanTables)
#include "tst_scan_table.moc"
