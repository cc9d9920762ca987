#include "driven_run.h"
#include "samples.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The language that a machine is set to changes nothing: no number, no title that is searched for,
// no file. The languages are built here, since few machines have them.
class Languages : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void languageChangesNothing_data();
    void languageChangesNothing();

private:
    void build(const QString& language);

    QTemporaryDir m_languages;
};

namespace {

// Titles that a Turkish "i" would not match, numbers with points and exponents, texts of all kinds.
const QByteArray data = "SNPID,POSITION,PVAL,CHRİ\n"
                        "İ,1000,1.5e-3,x\n"
                        "İ,5000,0.25,x\n"
                        "ı,1000,1E-300,x\n"
                        "ı,1500,.5,x\n"
                        "ı,3000,0.000123456789,x\n";
// The second chromosome's box lies at the right end of the genome view.
const QStringList script{"open data.txt",     "dump genome",     "click saveButton",
                         "box 520 0 560 300", "dump chromosome", "click saveButton",
                         "name Tabelle ı",    "dump saved",      "click exitButton"};

// Qt names the locale that it uses instead of one that is not in UTF-8.
QStringList otherComplaints(const DrivenRun& run) {
    QStringList complaints = run.complaints();
    complaints.removeIf([](const QString& line) {
        return line.startsWith("Detected locale \"C\"") || line.startsWith("Qt depends on a UTF-8");
    });
    return complaints;
}

} // namespace

void Languages::build(const QString& language) {
    QProcess process;
    process.start(QStringLiteral("localedef"), {"--no-archive", "-i", language, "-f", "UTF-8",
                                                m_languages.filePath(language + ".UTF-8")});
    QVERIFY2(process.waitForFinished(120'000) && process.exitCode() == 0,
             process.readAllStandardError() + "localedef and the languages' sources are needed");
}

void Languages::initTestCase() {
    build(QStringLiteral("de_DE"));
    build(QStringLiteral("tr_TR"));
}

void Languages::languageChangesNothing_data() {
    QTest::addColumn<QString>("language");
    for (const char* language : {"C", "de_DE.UTF-8", "tr_TR.UTF-8"})
        QTest::newRow(language) << QString(language);
}

void Languages::languageChangesNothing() {
    QFETCH(QString, language);
    DrivenRun plain, run;
    plain.addFile("data.txt", data);
    QVERIFY(plain.playTo(0, script));
    run.addFile("data.txt", data);
    run.setEnvironment("LC_ALL", language);
    run.setEnvironment("LANGUAGE", language);
    run.setEnvironment("LOCPATH", m_languages.path());
    run.play(script);
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(otherComplaints(run), QStringList());
    QCOMPARE(plain.state("chromosome").integers("Pos_list"), QList<int>({1000, 1500, 3000}));
    QCOMPARE(run.log(), plain.log());
    for (const char* file : {"Tabelle ı.txt", "Tabelle ı.png", "data.txt.png"})
        QCOMPARE(run.content(QString::fromUtf8(file)), plain.content(QString::fromUtf8(file)));
    QVERIFY(run.content(QString::fromUtf8("Tabelle ı.txt")).contains("\t0.000123457\t3.90849\n"));
    for (const char* moment : {"genome", "chromosome"}) {
        QCOMPARE(run.state(moment).texts("Tag"), plain.state(moment).texts("Tag"));
        QCOMPARE(run.state(moment).picture("shown"), plain.state(moment).picture("shown"));
    }
}

QTEST_GUILESS_MAIN(Languages)
#include "tst_languages.moc"
