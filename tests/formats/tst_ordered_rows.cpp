#include "ordered_rows.h"
#include "support/random.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <csignal>
#include <limits>
#include <string>
#include <sys/resource.h>
#include <tuple>
#include <vector>

// Rows come out in order of chromosome and position, whether memory holds them or not.
class RowOrder : public QObject {
    Q_OBJECT

private slots:
    void nothing();
    void ties_data();
    void ties();
    void randomRows_data();
    void randomRows();
    void millions_data();
    void millions();
    void longTexts();
    void leavesNoFile();
    void noFolder();
    void fullDisk();
};

namespace {

constexpr qint64 plenty = 1 << 30;

struct Row {
    quint32 chromosome;
    int position;
    std::string text;
    bool operator==(const Row&) const = default;
};

bool addAll(OrderedRows& ordered, const std::vector<Row>& rows) {
    return std::ranges::all_of(
        rows, [&](const Row& row) { return ordered.add(row.chromosome, row.position, row.text); });
}

std::vector<Row> taken(OrderedRows& ordered) {
    std::vector<Row> rows;
    for (OrderedRow row; ordered.next(row);)
        rows.push_back({row.chromosome, row.position, std::string(row.text)});
    return rows;
}

std::vector<Row> plainlySorted(std::vector<Row> rows, const QList<quint32>& rank) {
    std::ranges::stable_sort(
        rows, {}, [&](const Row& row) { return std::tuple(rank[row.chromosome], row.position); });
    return rows;
}

void check(const std::vector<Row>& rows, const QList<quint32>& rank, qint64 memory) {
    OrderedRows ordered(memory);
    QVERIFY(addAll(ordered, rows));
    QVERIFY(ordered.sort(rank));
    const std::vector<Row> result = taken(ordered), expected = plainlySorted(rows, rank);
    QCOMPARE(result.size(), expected.size());
    QVERIFY(result == expected);
    QCOMPARE(ordered.error(), QString());
    OrderedRow row;
    QVERIFY(!ordered.next(row));
}

std::vector<Row> randomRows(Random& random, int count, int chromosomes, int longest) {
    std::vector<Row> rows;
    const int positions = random.oneOf({1, 100, 1'000'000});
    for (int i = 0; i < count; ++i) {
        const int position = random.oneIn(50) ? random.oneOf({std::numeric_limits<int>::min(), -1,
                                                              0, std::numeric_limits<int>::max()})
                                              : random.below(positions);
        std::string text = std::to_string(i);
        text.resize(static_cast<size_t>(random.below(longest)), '.');
        rows.push_back({static_cast<quint32>(random.below(chromosomes)), position, text});
    }
    return rows;
}

// Ranks in another order than the numbers; some are shared where `isShared`.
QList<quint32> randomRanks(Random& random, int chromosomes, bool isShared) {
    QList<quint32> rank;
    for (int i = 0; i < chromosomes; ++i)
        rank += static_cast<quint32>(isShared ? i / 2 : i);
    for (int end = chromosomes; end > 1; --end)
        rank.swapItemsAt(end - 1, random.below(end));
    return rank;
}

// Makes `folder` the one for temporary files while this lives.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const QString& folder) : m_before(qgetenv("TMPDIR")) {
        qputenv("TMPDIR", QFile::encodeName(folder));
    }
    ~TemporaryFolder() { qputenv("TMPDIR", m_before.isEmpty() ? "/tmp" : m_before); }

private:
    QByteArray m_before;
};

} // namespace

void RowOrder::nothing() {
    for (const qint64 memory : {qint64{0}, plenty})
        check({}, {}, memory);
    OrderedRows unsorted(plenty);
    QVERIFY(unsorted.add(0, 1, "a"));
    OrderedRow row;
    QVERIFY(!unsorted.next(row));
}

void RowOrder::ties_data() {
    QTest::addColumn<qint64>("memory");
    QTest::newRow("in memory") << plenty;
    QTest::newRow("a file for some") << qint64{60};
    QTest::newRow("a file for each") << qint64{0};
}

void RowOrder::ties() {
    QFETCH(const qint64, memory);
    const std::vector<Row> rows = {{1, 5, "a"}, {0, 5, "b"}, {1, 5, ""},   {1, 5, ""}, {1, 5, "c"},
                                   {0, 9, "d"}, {0, 5, "e"}, {1, -2, "f"}, {2, 1, "g"}};
    check(rows, {0, 1, 2}, memory);
    check(rows, {2, 0, 1}, memory);
    check(rows, {0, 0, 0}, memory);
}

void RowOrder::randomRows_data() {
    QTest::addColumn<qint64>("memory");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("longest");
    QTest::newRow("in memory") << plenty << 1000 << 40;
    QTest::newRow("many rows") << plenty << 300'000 << 12;
    QTest::newRow("two runs") << qint64{20'000} << 1000 << 20;
    QTest::newRow("many runs") << qint64{1000} << 5000 << 20;
    QTest::newRow("runs of many rows") << qint64{5'000'000} << 300'000 << 12;
}

void RowOrder::randomRows() {
    QFETCH(const qint64, memory);
    QFETCH(const int, count);
    QFETCH(const int, longest);
    Random random(runSeed());
    for (int i = 0; i < (count > 10'000 ? 2 : 20); ++i) {
        const int chromosomes = random.oneOf({1, 5, 25, 300});
        const std::vector<Row> rows =
            ::randomRows(random, random.between(count / 2, count), chromosomes, longest);
        check(rows, randomRanks(random, chromosomes, random.oneIn(3)), memory);
    }
}

void RowOrder::millions_data() {
    QTest::addColumn<int>("positions");
    QTest::newRow("all over a chromosome") << 200'000'000;
    QTest::newRow("many ties") << 50'000;
    QTest::newRow("one position") << 1;
}

// More rows than are kept in one piece. Their texts are their numbers.
void RowOrder::millions() {
    QFETCH(const int, positions);
    constexpr int count = 2'500'000;
    Random random(runSeed());
    OrderedRows ordered(plenty);
    qint64 positionsAdded = 0;
    for (int i = 0; i < count; ++i) {
        const int position = random.below(positions);
        positionsAdded += position;
        QVERIFY(ordered.add(random.oneIn(2) ? 1 : 0, position, std::to_string(i)));
    }
    QVERIFY(ordered.sort({1, 0}));
    std::vector<bool> isTaken(count);
    std::tuple last(quint32{0}, -1, -1);
    OrderedRow row;
    for (int i = 0; i < count; ++i) {
        QVERIFY(ordered.next(row));
        const int number = std::stoi(std::string(row.text));
        const std::tuple place(1 - row.chromosome, row.position, number);
        QVERIFY(last < place);
        QVERIFY(!isTaken[static_cast<size_t>(number)]);
        isTaken[static_cast<size_t>(number)] = true;
        positionsAdded -= row.position;
        last = place;
    }
    QVERIFY(!ordered.next(row));
    QCOMPARE(positionsAdded, qint64{0});
}

void RowOrder::longTexts() {
    Random random(runSeed());
    const std::vector<Row> rows = ::randomRows(random, 60, 3, 3'000'000);
    for (const qint64 memory : {plenty, qint64{10'000'000}, qint64{0}})
        check(rows, {2, 0, 1}, memory);
}

void RowOrder::leavesNoFile() {
    const QTemporaryDir folder;
    const TemporaryFolder temporary(folder.path());
    OrderedRows ordered(100);
    for (int i = 0; i < 100; ++i)
        QVERIFY(ordered.add(0, 100 - i, "a text of a row"));
    const auto entries = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;
    QCOMPARE(QDir(folder.path()).entryList(entries), QStringList());
    QVERIFY(ordered.sort({0}));
    QCOMPARE(taken(ordered).size(), size_t{100});
    QCOMPARE(QDir(folder.path()).entryList(entries), QStringList());
}

void RowOrder::noFolder() {
    const TemporaryFolder temporary(QStringLiteral("/nowhere/at/all"));
    OrderedRows ordered(0);
    QVERIFY(!ordered.add(0, 1, "text"));
    QVERIFY2(ordered.error().contains(QStringLiteral("/nowhere/at/all")),
             qPrintable(ordered.error()));
    QVERIFY(!ordered.add(0, 1, "text"));
    QVERIFY(!ordered.sort({0}));
    OrderedRow row;
    QVERIFY(!ordered.next(row));
}

// A limit on the size of files stands for a disk that is full.
void RowOrder::fullDisk() {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = before;
    small.rlim_cur = 100'000;
    setrlimit(RLIMIT_FSIZE, &small);
    OrderedRows ordered(10'000);
    const std::string text(1000, 'x');
    int added = 0;
    while (added < 1000 && ordered.add(0, -added, text))
        ++added;
    const bool isSorted = ordered.sort({0});
    setrlimit(RLIMIT_FSIZE, &before);
    QVERIFY2(added > 50 && added < 100, qPrintable(QString::number(added)));
    QVERIFY(!isSorted);
    QVERIFY2(ordered.error().startsWith(QStringLiteral("Cannot write a temporary file in ")),
             qPrintable(ordered.error()));
    OrderedRow row;
    QVERIFY(!ordered.next(row));
}

QTEST_GUILESS_MAIN(RowOrder)
#include "tst_ordered_rows.moc"
