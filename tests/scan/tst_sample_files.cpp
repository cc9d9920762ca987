#include "chromosome_load.h"
#include "genome_scan.h"
#include "plain_reader.h"
#include "support/reading.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <numeric>

// Real association results, as different tools write them. The numbers were counted apart from the
// program.
class SampleFiles : public QObject {
    Q_OBJECT

private slots:
    void scans_data();
    void scans();
    void loads_data();
    void loads();
    void refused_data();
    void refused();
};

namespace {

QString examplePath(const char* name) {
    return QDir(QStringLiteral(PELMARK_EXAMPLES)).filePath(QLatin1String(name));
}

QString dataPath(const char* name) {
    return QDir(QStringLiteral(PELMARK_TEST_DATA)).filePath(QLatin1String(name));
}

Result<GenomeScan> scanPath(const QString& path) {
    QFile file(path);
    return scanGenome(file);
}

Result<Points> loadPath(const QString& path, const QString& label) {
    QFile file(path);
    return loadChromosome(file, label);
}

} // namespace

void SampleFiles::scans_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("notNumbers");
    QTest::addColumn<int>("chromosomes");
    QTest::addColumn<QString>("lastLabel");
    QTest::addColumn<int>("lastCoordinate");
    QTest::addColumn<qint64>("sumOfCoordinates");
    QTest::addColumn<double>("largestValue");
    QTest::addColumn<double>("lastValue");
    const auto row = [](const QString& path, int points, int notNumbers, int chromosomes,
                        const char* lastLabel, int lastCoordinate, qint64 sum, double largest,
                        double last) {
        QTest::newRow(qPrintable(path.section(u'/', -1)))
            << path << points << notNumbers << chromosomes << QString(lastLabel) << lastCoordinate
            << sum << largest << last;
    };
    row(examplePath("genome_100k.txt"), 100000, 0, 22, "22", 27845260, 1416517860822,
        38.31605286924849, 1.422163658707256);
    row(examplePath("chromosome1.txt"), 868, 0, 1, "1", 2688, 1606413, 3.744727494896694,
        0.3565473235138126);
    row(examplePath("small.txt"), 95, 0, 20, "X", 13940350, 841965924, 236.568636235841,
        0.2724587429714435);
    row(dataPath("blocks_unsorted.txt"), 409, 0, 247, "15", -2540001, -778786571, 42.17848647159523,
        3.7490118969861905);
    row(dataPath("comma.csv"), 10, 0, 5, "5", -8998, 9019, 7.655470389228389, 0.2971898033017406);
    row(dataPath("nan_p.txt"), 96, 56, 10, "X", 1487087, -3740084, 1.3419857398722272,
        0.8032740383167155);
    row(dataPath("neglog10_first.txt"), 282, 0, 1, "1", 7634, 1942825, 2.624153563690844,
        0.47056964563301407);
    row(dataPath("rsid_first.txt"), 20000, 0, 19958, "rs35661778", -7440110, -113755999959,
        4.445268623324034, 0.5335238657453831);
    row(dataPath("sorted_by_p_crlf.txt"), 1499, 0, 1185, "1", 1247, 959422, 33.05155700687924,
        0.5301888556016527);
}

void SampleFiles::scans() {
    QFETCH(QString, path);
    const Result<GenomeScan> result = scanPath(path);
    QVERIFY2(std::holds_alternative<GenomeScan>(result), qPrintable(told(result)));
    const auto& [chromosomes, points] = std::get<GenomeScan>(result);
    QTEST(static_cast<int>(points.positions.size()), "points");
    QTEST(static_cast<int>(chromosomes.size()), "chromosomes");
    QTEST(chromosomes.constLast().label, "lastLabel");
    QTEST(points.positions.constLast(), "lastCoordinate");
    QTEST(std::accumulate(points.positions.begin(), points.positions.end(), qint64(0)),
          "sumOfCoordinates");
    QTEST(points.values.constLast(), "lastValue");
    QList<double> values = points.values;
    values.removeIf([](double value) { return std::isnan(value); });
    QTEST(static_cast<int>(points.values.size() - values.size()), "notNumbers");
    QTEST(*std::max_element(values.begin(), values.end()), "largestValue");
    QFile plainFile(path);
    QVERIFY(isSame(result, plain::scanGenome(plainFile)));
}

void SampleFiles::loads_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<double>("lastValue");
    const auto row = [](const QString& path, const char* label, int points, int first, int last,
                        double lastValue) {
        QTest::addRow("%s, %s", qPrintable(path.section(u'/', -1)), label)
            << path << QString(label) << points << first << last << lastValue;
    };
    row(examplePath("genome_100k.txt"), "1", 7475, 759036, 249183206, 0.10303309806684523);
    row(examplePath("genome_100k.txt"), "22", 1402, 16918335, 51195550, 1.422163658707256);
    row(examplePath("chromosome1.txt"), "1", 868, 662622, 931362, 0.3565473235138126);
    row(examplePath("small.txt"), "1", 9, 869334, 220508129, 0.623423042943488);
    row(examplePath("small.txt"), "X", 16, 2775601, 128996953, 0.2724587429714435);
    row(dataPath("comma.csv"), "1", 2, 100003, 1000033, 0.1013843057149856);
    row(dataPath("comma.csv"), "5", 2, 1000383, 1000386, 0.2971898033017406);
    row(dataPath("nan_p.txt"), "X", 58, 20113, 155235078, 0.8032740383167155);
    row(dataPath("neglog10_first.txt"), "1", 282, 11063, 774363, 0.47056964563301407);
}

void SampleFiles::loads() {
    QFETCH(QString, path);
    QFETCH(QString, label);
    const Result<Points> result = loadPath(path, label);
    QVERIFY2(std::holds_alternative<Points>(result), qPrintable(told(result)));
    const Points& points = std::get<Points>(result);
    QTEST(static_cast<int>(points.positions.size()), "points");
    QTEST(points.positions.constFirst(), "first");
    QTEST(points.positions.constLast(), "last");
    QTEST(points.values.constLast(), "lastValue");
    QFile plainFile(path);
    QVERIFY(isSame(result, plain::loadChromosome(plainFile, label)));
}

void SampleFiles::refused_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("scanFault");
    QTest::addColumn<QString>("loadFault");
    const auto row = [](const char* name, const char* label, const char* scanFault,
                        const char* loadFault) {
        QTest::newRow(name) << dataPath(name) << QString(label) << QString(scanFault)
                            << QString(loadFault);
    };
    const char* const badPosition = "bad position";
    const char* const noColumns = "wrong columns";
    row("double_blanks.txt", "1", badPosition, badPosition);
    row("refused_bp.csv", "1", noColumns, noColumns);
    row("refused_no_p.txt", "1", noColumns, noColumns);
    row("refused_quoted.csv", "1", noColumns, noColumns);
}

void SampleFiles::refused() {
    QFETCH(QString, path);
    QFETCH(QString, label);
    QTEST(told(scanPath(path)), "scanFault");
    QTEST(told(loadPath(path, label)), "loadFault");
}

QTEST_GUILESS_MAIN(SampleFiles)
#include "tst_sample_files.moc"
