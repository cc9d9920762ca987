#include "chromosome_load.h"
#include "genome_scan.h"
#include "support/failing_device.h"
#include "support/reading.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// Files that cannot be opened, and files that stop being readable partway.
class ReadErrors : public QObject {
    Q_OBJECT

private slots:
    void cannotOpen_data();
    void cannotOpen();
    void failsWhileReading_data();
    void failsWhileReading();
    void failsAfterTheChromosome();
    void failurePlace();
};

namespace {

const QByteArray content = "chr,pos,pval\n1,100,0.1\n1,200,0.1\n2,300,0.1\n2,400,0.1\n";

QString readAll(QIODevice& device) {
    return told(scanGenome(device));
}

QString readChromosome(QIODevice& device, const QString& label) {
    return told(loadChromosome(device, label));
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
    QCOMPARE(readAll(file), QStringLiteral("unreadable"));
}

void ReadErrors::failsWhileReading_data() {
    QTest::addColumn<qint64>("goodBytes");
    for (qint64 goodBytes = 0; goodBytes < content.size(); ++goodBytes)
        QTest::addRow("after %lld bytes", goodBytes) << goodBytes;
}

// A read error is not the end of the file: the points so far must not pass for all of them.
void ReadErrors::failsWhileReading() {
    QFETCH(qint64, goodBytes);
    const QString fault = QStringLiteral("unreadable");
    FailingDevice scanned(content, goodBytes);
    QCOMPARE(readAll(scanned), fault);
    FailingDevice loaded(content, goodBytes);
    QCOMPARE(readChromosome(loaded, QStringLiteral("2")), fault);
}

void ReadErrors::failsAfterTheChromosome() {
    FailingDevice whole(content, content.size());
    QCOMPARE(readAll(whole), QStringLiteral("1|2: 1 2 3 4 = 1 1 1 1"));
    // What lies far after the chromosome is not read, so its failure goes unnoticed.
    const QByteArray longContent = content + QByteArray("3,500,0.1\n").repeated(100'000);
    FailingDevice device(longContent, longContent.size() - 1);
    QCOMPARE(readChromosome(device, QStringLiteral("1")), QStringLiteral("100 200 = 1 1"));
}

// The line is the last one that could be read.
void ReadErrors::failurePlace() {
    const QByteArray longContent = content + QByteArray("3,500,0.1\n").repeated(100'000);
    FailingDevice device(longContent, longContent.size() - 1);
    const Result<GenomeScan> result = scanGenome(device);
    QVERIFY(std::holds_alternative<Fault>(result));
    const auto& fault = std::get<Fault>(result);
    QCOMPARE(fault.code, FaultCode::CannotOpenFile);
    QCOMPARE(fault.line, 5 + 100'000 - 1);
    FailingDevice unreadable(longContent, 0);
    QCOMPARE(placeOf(std::get<Fault>(scanGenome(unreadable))), QStringLiteral("line 0, column : "));
}

QTEST_GUILESS_MAIN(ReadErrors)
#include "tst_read_errors.moc"
