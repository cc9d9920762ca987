#include "genome_scan.h"
#include "pages.h"

#include <QDir>
#include <QMap>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

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

// What the guide says about faulty files and messages.
class GuideFaults : public QObject {
    Q_OBJECT

private slots:
    void tablesPutTogetherDoNotOpen();
    void compressedFilesAreExplained();
    void trapsAreTrue();
    void messagesAreExplained();
};

void GuideFaults::tablesPutTogetherDoNotOpen() {
    const QByteArray table = "Chr\tPosition\tP\t-log10(P)\n1\t10\t0.1\t1\n1\t20\t0.01\t2\n";
    QVERIFY(!faultOfText(table));
    QCOMPARE(faultOfText(table + table), FaultCode::NonNumericPValue);
}

// Under each message that one causes.
void GuideFaults::compressedFilesAreExplained() {
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

void GuideFaults::trapsAreTrue() {
    QVERIFY(!faultOfText("chr pos p\n1 1 0.5\n1 2 1e-320\n"));
    QCOMPARE(faultOfText("chr pos p\n1 1 0.5\n1 2 1e-400\n"), FaultCode::NonNumericPValue);
    QCOMPARE(faultOfText("chr pos p\n1 1 0.5\n1 2 0\n"), FaultCode::TooFewGenomePoints);
    QCOMPARE(faultOfText("chr1 1 0.5\nchr1 2 0.5\n"), FaultCode::IncorrectColumns);
    QCOMPARE(faultOfText("chr,pos,p value\n1,1,0.5\n"), FaultCode::TooFewColumns);
    QCOMPARE(faultOfText("# made by hand\nchr,pos,p\n"), FaultCode::IncorrectColumns);
}

// What is in the code is what the guide has to explain.
void GuideFaults::messagesAreExplained() {
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

QTEST_GUILESS_MAIN(GuideFaults)
#include "tst_guide_faults.moc"
