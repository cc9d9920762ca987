#include "support/random.h"
#include "support/random_association_file.h"
#include "support/reading.h"
#include "utf8.h"
#include "window_reading.h"

#include <QBuffer>
#include <QTest>

// What the walk over all lines says of a file, against what the window's reader makes of it.
class WindowReadings : public QObject {
    Q_OBJECT

private slots:
    void countsTheMarkersOfAScan();
    void findsTheFirstFault();
    void goesOnAfterAFault();
    void countsStretchesAsTheWindowLoadsThem();
};

namespace {

WindowReading reading(QByteArray file) {
    QBuffer device(&file);
    return readAsWindow(device);
}

bool endsTheWindow(const Finding& finding) {
    return finding.code <= FindingCode::ShortLine;
}

qint64 firstFaultLine(const WindowReading& reading) {
    qint64 line = 0;
    for (const Finding& finding : reading.findings)
        if (endsTheWindow(finding) && (line == 0 || finding.first[0].line < line))
            line = finding.first[0].line;
    return line;
}

} // namespace

void WindowReadings::countsTheMarkersOfAScan() {
    Random random(runSeed());
    int scanned = 0;
    for (int i = randomCases(20000); i > 0; --i) {
        const RandomAssociationFile file = randomAssociationFile(random);
        const Result<GenomeScan> result = scan(file.bytes);
        const GenomeScan* const genome = std::get_if<GenomeScan>(&result);
        if (genome == nullptr)
            continue;
        ++scanned;
        const WindowReading read = reading(file.bytes);
        QCOMPARE(firstFaultLine(read), 0);
        QCOMPARE(read.kept, genome->points.positions.size());
        QCOMPARE(read.isOneChromosome, genome->chromosomes.size() == 1);
        for (const ChromosomeFacts& facts : read.chromosomes) {
            if (facts.label.isEmpty() || facts.loaded < 2)
                continue;
            const Result<Points> loaded =
                load(file.bytes,
                     fromUtf8({facts.label.constData(), static_cast<size_t>(facts.label.size())}));
            if (const Points* const points = std::get_if<Points>(&loaded)) {
                QCOMPARE(facts.loaded, points->positions.size());
                QCOMPARE(facts.firstPosition, points->positions.first());
                QCOMPARE(facts.lastPosition, points->positions.last());
            }
        }
    }
    QVERIFY(scanned > 100);
}

void WindowReadings::findsTheFirstFault() {
    Random random(runSeed());
    int faulty = 0;
    for (int i = randomCases(20000); i > 0; --i) {
        const RandomAssociationFile file = randomAssociationFile(random);
        const Result<GenomeScan> result = scan(file.bytes);
        const Fault* const fault = std::get_if<Fault>(&result);
        if (fault == nullptr)
            continue;
        const WindowReading read = reading(file.bytes);
        if (fault->code == FaultCode::TooFewGenomePoints) {
            QVERIFY(read.kept < 2);
        } else if (read.layout) {
            ++faulty;
            QCOMPARE(firstFaultLine(read), fault->line);
        } else {
            QVERIFY(read.refusal.has_value());
            QVERIFY(isSame(*read.refusal, *fault));
        }
    }
    QVERIFY(faulty > 100);
}

void WindowReadings::goesOnAfterAFault() {
    const WindowReading read =
        reading("chr\tpos\tp\n1\t10\t.\n1\t20\t0.5\n1\n1\tx\t0.1\n2\t30\t1e-9\n");
    QCOMPARE(read.rows, 5);
    QCOMPARE(read.kept, 2);
    QCOMPARE(read.smallestP, 1e-9);
    QCOMPARE(read.findings.size(), 3);
    QCOMPARE(read.findings[0].code, FindingCode::PNotANumber);
    QCOMPARE(read.findings[0].first[0].line, 2);
    QCOMPARE(read.findings[1].code, FindingCode::ShortLine);
    QCOMPARE(read.findings[1].first[0].line, 4);
    QCOMPARE(read.findings[2].code, FindingCode::PositionNotWhole);
    QCOMPARE(read.findings[2].first[0].text, QStringLiteral("x"));
}

// The genome view goes on where a line that is left out has another label; a pick does not.
void WindowReadings::countsStretchesAsTheWindowLoadsThem() {
    const QByteArray file = "chr\tpos\tp\n1\t10\t0.5\n1\t20\t0.5\n2\t5\tNA\n1\t30\t0.5\n";
    const WindowReading read = reading(file);
    QCOMPARE(read.kept, 3);
    QVERIFY(read.isOneChromosome);
    QCOMPARE(read.chromosomes[0].markers, 3);
    QCOMPARE(read.chromosomes[0].loaded, 2);
    QCOMPARE(std::get<Points>(load(file, QStringLiteral("1"))).positions.size(), 2);
    QCOMPARE(read.findings.size(), 1);
    QCOMPARE(read.findings[0].code, FindingCode::ChromosomeReturns);
    QCOMPARE(read.findings[0].lastLine, 5);
}

QTEST_GUILESS_MAIN(WindowReadings)
#include "tst_window_reading.moc"
