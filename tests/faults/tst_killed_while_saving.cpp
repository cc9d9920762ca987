#include "driven_run.h"
#include "machine.h"
#include "samples.h"

#include <QTest>

// The program is killed at many points during a save. Each name must then hold either the older
// file or the complete new one.
class KilledWhileSaving : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void whileWriting_data();
    void whileWriting();
    void betweenCalls();

private:
    int killed(const char* variable, qint64 moment);

    QByteArray m_table;
    QByteArray m_image;
};

static const QByteArray older = "older file\n";
static const QStringList script{"open data.txt", "click saveButton", "name saved",
                                "click exitButton"};

static void addFiles(const DrivenRun& run) {
    run.addCopy("data.txt", QStringLiteral(PELMARK_EXAMPLES "/chromosome1.txt"));
    run.addFile("saved.txt", older);
    run.addFile("saved.png", older);
}

void KilledWhileSaving::initTestCase() {
    DrivenRun run;
    addFiles(run);
    QVERIFY(run.playTo(0, script));
    m_table = run.content("saved.txt");
    m_image = run.content("saved.png");
    QVERIFY2(m_table.size() > 10'000, qPrintable(QString::number(m_table.size())));
    QVERIFY2(m_image.size() > 1'000, qPrintable(QString::number(m_image.size())));
}

// Runs the program until it is killed at that moment and returns the number of new files; -1 if it
// was not killed, -2 if a file and -3 if the log is damaged.
int KilledWhileSaving::killed(const char* variable, qint64 moment) {
    DrivenRun run;
    addFiles(run);
    {
        const machine::FailingFiles fails(run.path(""), variable, moment);
        run.play(script);
    }
    const QByteArray table = run.content("saved.txt"), image = run.content("saved.png");
    if ((table != older && table != m_table) || (image != older && image != m_image))
        return -2;
    if (!run.log().isEmpty() && !QByteArray(logHeader).startsWith(run.log()) &&
        !run.log().startsWith(logHeader))
        return -3;
    return run.exitStatus() == 0 ? -1 : int(table == m_table) + int(image == m_image);
}

void KilledWhileSaving::whileWriting_data() {
    QTest::addColumn<int>("part");
    for (int part = 0; part < 10; ++part)
        QTest::addRow("part %d", part) << part;
}

// Ten moments in each tenth of the bytes written.
void KilledWhileSaving::whileWriting() {
    QFETCH(int, part);
    constexpr int moments = 100;
    const qint64 bytes = m_table.size() + m_image.size();
    for (int moment = part * 10; moment < part * 10 + 10; ++moment) {
        const int newFiles = killed("PELMARK_FAULT_BYTE", bytes * moment / moments);
        QVERIFY2(newFiles >= 0, qPrintable(QString::number(newFiles)));
    }
}

void KilledWhileSaving::betweenCalls() {
    QList<int> newFiles;
    do
        newFiles.append(killed("PELMARK_FAULT_CALL", newFiles.size()));
    while (newFiles.last() >= 0 && newFiles.size() < 100);
    QCOMPARE(newFiles.last(), -1);
    QVERIFY2(newFiles.contains(0) && newFiles.contains(1),
             qPrintable(QString::number(newFiles.size())));
}

QTEST_GUILESS_MAIN(KilledWhileSaving)
#include "tst_killed_while_saving.moc"
