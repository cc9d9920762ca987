#include "chromosome_load.h"
#include "genome_scan.h"
#include "pages.h"
#include "tools_run.h"

#include <QDir>
#include <QMap>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>

using namespace pages;

namespace {

QString guide() {
    return textOf(sourcePath(QStringLiteral("docs/guide.md")));
}

std::optional<FaultCode> faultOf(const QString& path) {
    QFile file(path);
    const Result<GenomeScan> scan = scanGenome(file);
    const Fault* fault = std::get_if<Fault>(&scan);
    return fault ? std::optional(fault->code) : std::nullopt;
}

// What was read; nothing where the file is at fault.
template <typename T>
T valueOf(const Result<T>& result) {
    return std::holds_alternative<T>(result) ? std::get<T>(result) : T();
}

GenomeScan scanOf(const QString& path) {
    QFile file(path);
    return valueOf(scanGenome(file));
}

Points pointsOf(const QString& path, const QString& chromosome) {
    QFile file(path);
    return valueOf(loadChromosome(file, chromosome));
}

// The markers that are in every one of the tools' files, as lines of chromosome, position and p
// with three digits.
QStringList expectedMarkers() {
    QStringList lines =
        textOf(QStringLiteral(PELMARK_GUIDE_DATA "/markers.txt")).split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : lines) {
        const QStringList fields = line.split(u'\t');
        line = QStringLiteral("%1 %2 %3")
                   .arg(fields[0], fields[1])
                   .arg(fields[2].toDouble(), 0, 'g', 3);
    }
    return lines;
}

QStringList markersOf(const QString& path) {
    QStringList lines;
    for (const Chromosome& chromosome : scanOf(path).chromosomes) {
        const Points points = pointsOf(path, chromosome.label);
        for (qsizetype i = 0; i < points.positions.size(); ++i)
            lines.append(QStringLiteral("%1 %2 %3")
                             .arg(chromosome.label)
                             .arg(points.positions[i])
                             .arg(std::pow(10.0, -points.values[i]), 0, 'g', 3));
    }
    return lines;
}

std::optional<FaultCode> faultOfText(const QByteArray& text) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("scan.txt")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write a file");
    file.close();
    return faultOf(file.fileName());
}

QByteArray packed(const QString& program, const QString& path) {
    QProcess process;
    process.start(program, {QStringLiteral("-c"), path});
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("cannot run %s", qPrintable(program));
    return process.readAllStandardOutput();
}

} // namespace

// What the guide says about files and messages.
class GuideFiles : public QObject {
    Q_OBJECT

private slots:
    void outputOfToolsIsPrepared_data();
    void outputOfToolsIsPrepared();
    void tablesPutTogetherDoNotOpen();
    void compressedFilesAreExplained();
    void trapsAreTrue();
    void messagesAreExplained();
};

void GuideFiles::outputOfToolsIsPrepared_data() {
    QTest::addColumn<QString>("path");
    for (const QFileInfo& file :
         QDir(PELMARK_GUIDE_DATA "/tool_outputs").entryInfoList(QDir::Files))
        QTest::addRow("%s", qPrintable(file.fileName())) << file.filePath();
}

// The window opens it then, and shows the markers that are in all these files.
void GuideFiles::outputOfToolsIsPrepared() {
    QFETCH(QString, path);
    const ToolsRun run;
    QCOMPARE(run.run({"prepare", path, "-q", "-o", "out.txt"}).status, 0);
    QCOMPARE(markersOf(run.path("out.txt")), expectedMarkers());
}

void GuideFiles::tablesPutTogetherDoNotOpen() {
    const QByteArray table = "Chr\tPosition\tP\t-log10(P)\n1\t10\t0.1\t1\n1\t20\t0.01\t2\n";
    QVERIFY(!faultOfText(table));
    QCOMPARE(faultOfText(table + table), FaultCode::NonNumericPValue);
}

// Under each message that one causes.
void GuideFiles::compressedFilesAreExplained() {
    const QMap<FaultCode, QString> messages{
        {FaultCode::UnknownDelimiter, "Unknown data file delimiter!"},
        {FaultCode::TooFewColumns, "Data file contains < 3 columns!"},
        {FaultCode::IncorrectColumns, "Incorrect data columns!"}};
    QSet<FaultCode> seen;
    for (const char* folder :
         {PELMARK_EXAMPLES, PELMARK_TEST_DATA, PELMARK_GUIDE_DATA "/tool_outputs"})
        for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files))
            for (const char* program : {"gzip", "zstd"}) {
                const auto fault = faultOfText(packed(program, file.filePath()));
                QVERIFY(fault && messages.contains(*fault));
                seen.insert(*fault);
                QVERIFY(found(guide(), "^\\| `" + messages[*fault] + "` \\| (.*)$")
                            .join(u' ')
                            .contains("compressed"));
            }
    QCOMPARE(seen.size(), messages.size());
}

void GuideFiles::trapsAreTrue() {
    QVERIFY(!faultOfText("chr pos p\n1 1 0.5\n1 2 1e-320\n"));
    QCOMPARE(faultOfText("chr pos p\n1 1 0.5\n1 2 1e-400\n"), FaultCode::NonNumericPValue);
    QCOMPARE(faultOfText("chr pos p\n1 1 0.5\n1 2 0\n"), FaultCode::TooFewGenomePoints);
    QCOMPARE(faultOfText("chr1 1 0.5\nchr1 2 0.5\n"), FaultCode::IncorrectColumns);
    QCOMPARE(faultOfText("chr,pos,p value\n1,1,0.5\n"), FaultCode::TooFewColumns);
    QCOMPARE(faultOfText("# made by hand\nchr,pos,p\n"), FaultCode::IncorrectColumns);
}

// What is in the code is what the guide has to explain.
void GuideFiles::messagesAreExplained() {
    QStringList messages =
        found(textOf(sourcePath(QStringLiteral("src/window/fault_sentences.cpp"))),
              QStringLiteral("\"([^\"]+!)\""));
    QCOMPARE(messages.size(), 8);
    QString window = textOf(sourcePath(QStringLiteral("src/window/main.cpp")));
    window += textOf(sourcePath(QStringLiteral("src/window/log.cpp")));
    messages += found(window, QStringLiteral("writeLog\\(\"([^\"\\\\]+)"));
    messages += found(window, QStringLiteral("endProcess\\(QStringLiteral\\(\"([^\"\\\\]+)"));
    QVERIFY(messages.size() > 12);
    const QString log = guide().section(QStringLiteral("## What the log says"), 1);
    for (const QString& message : std::as_const(messages))
        QVERIFY2(log.contains(QStringLiteral("| `") + message.trimmed()), qPrintable(message));
}

QTEST_GUILESS_MAIN(GuideFiles)
#include "tst_guide_files.moc"
