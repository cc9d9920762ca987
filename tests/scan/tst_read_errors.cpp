#include "association_file.h"
#include "chromosome_load.h"
#include "genome_scan.h"
#include "support/failing_device.h"
#include "support/reading.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// Files that cannot be opened, and files that stop being readable half-way; and the words for it
// all.
class ReadErrors : public QObject {
    Q_OBJECT

private slots:
    void cannotOpen_data();
    void cannotOpen();
    void failsWhileReading_data();
    void failsWhileReading();
    void failsBehindTheChromosome();
    void messages_data();
    void messages();
};

namespace {

const QByteArray content = "chr,pos,pval\n1,100,0.1\n1,200,0.1\n2,300,0.1\n2,400,0.1\n";

QString readAll(QIODevice& device) {
    AssociationFile file(device);
    if (const std::optional<Fault> fault = file.open())
        return told(*fault);
    return told(scanGenome(file));
}

QString readChromosome(QIODevice& device, const QString& label) {
    AssociationFile file(device);
    if (const std::optional<Fault> fault = file.open())
        return told(*fault);
    return told(loadChromosome(file, label));
}

} // namespace

void ReadErrors::cannotOpen_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("no such file") << QStringLiteral("missing.txt");
    QTest::newRow("a folder") << QStringLiteral(".");
    QTest::newRow("no name") << QString();
    QTest::newRow("a file taken for a folder") << QStringLiteral("file.txt/data.txt");
    QTest::newRow("a link to nowhere") << QStringLiteral("link.txt");
}

void ReadErrors::cannotOpen() {
    QFETCH(QString, name);
    QTemporaryDir folder;
    QFile existing(folder.filePath(QStringLiteral("file.txt")));
    QVERIFY(existing.open(QIODevice::WriteOnly));
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("nowhere")),
                        folder.filePath(QStringLiteral("link.txt"))));
    QFile file(name.isEmpty() ? name : folder.filePath(name));
    QCOMPARE(readAll(file), QStringLiteral("Cannot open data file!"));
}

void ReadErrors::failsWhileReading_data() {
    QTest::addColumn<qint64>("goodBytes");
    for (qint64 goodBytes = 0; goodBytes < content.size(); ++goodBytes)
        QTest::addRow("after %lld bytes", goodBytes) << goodBytes;
}

// A file that fails is none that ends: no points may be taken for all of them.
void ReadErrors::failsWhileReading() {
    QFETCH(qint64, goodBytes);
    const QString fault = QStringLiteral("Cannot open data file!");
    FailingDevice scanned(content, goodBytes);
    QCOMPARE(readAll(scanned), fault);
    FailingDevice loaded(content, goodBytes);
    QCOMPARE(readChromosome(loaded, QStringLiteral("2")), fault);
}

void ReadErrors::failsBehindTheChromosome() {
    FailingDevice whole(content, content.size());
    QCOMPARE(readAll(whole), QStringLiteral("1|2: 1 2 3 4 = 1 1 1 1"));
    // What lies far behind the chromosome is not read, so its failing goes unnoticed.
    const QByteArray longContent = content + QByteArray("3,500,0.1\n").repeated(100'000);
    FailingDevice device(longContent, longContent.size() - 1);
    QCOMPARE(readChromosome(device, QStringLiteral("1")), QStringLiteral("100 200 = 1 1"));
}

void ReadErrors::messages_data() {
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("text");
    const auto row = [](Fault fault, const char* text) {
        QTest::newRow(text) << static_cast<int>(fault) << QString(text);
    };
    row(Fault::CannotOpenFile, "Cannot open data file!");
    row(Fault::UnknownDelimiter, "Unknown data file delimiter!");
    row(Fault::TooFewColumns, "Data file contains < 3 columns!");
    row(Fault::IncorrectColumns, "Incorrect data columns!");
    row(Fault::NonNumericPValue, "Non-numeric p-value detected!");
    row(Fault::NonIntegerPosition, "Non-integer position value detected!");
    row(Fault::TooFewGenomePoints, "Illegal data range in getManhattan0!");
    row(Fault::TooFewChromosomePoints, "Illegal data range in getManhattan!");
}

void ReadErrors::messages() {
    QFETCH(int, fault);
    QTEST(QString(message(static_cast<Fault>(fault))), "text");
}

QTEST_GUILESS_MAIN(ReadErrors)
#include "tst_read_errors.moc"
