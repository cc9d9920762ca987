#include "driven_run.h"
#include "support/random.h"
#include "tools_run.h"

#include <QImage>
#include <QProcess>
#include <QTest>

// A day's work: a result file is prepared, checked, drawn and searched for leads; in the window,
// peaks on two chromosomes are saved and removed; `drop` takes them out of the file, which is drawn
// and searched again.
class CutSession : public QObject {
    Q_OBJECT

private slots:
    void nothingOfTheCutIsLeft_data();
    void nothingOfTheCutIsLeft();

private:
    bool runTools(const DrivenRun& run, const QStringList& words) const;
    void look(const DrivenRun& run, const QString& name, const QByteArrayList& chromosomes) const;
};

namespace {

constexpr int markers = 300; // on each chromosome

struct Marker {
    int chromosome;
    int position;
    double negLog10;
};

// A peak in the middle of each chromosome; some markers share place and p, and some have none.
QList<Marker> randomMarkers(Random& random) {
    QList<Marker> all;
    for (const int chromosome : {1, 2, 3})
        for (int i = 0; i < markers; ++i) {
            const bool isPeak = i > 140 && i < 160;
            const double value =
                isPeak ? 8 + random.below(2800) / 100.0 : random.below(50'000) / 10'000.0;
            all.append({chromosome, 1'000'000 + 1000 * (i - i % 2), value});
            if (i % 50 == 0)
                all.last().negLog10 = all.value(all.size() - 2).negLog10;
        }
    return all;
}

QByteArray regenie(const QList<Marker>& all) {
    QByteArray text = "CHROM GENPOS ID ALLELE0 ALLELE1 N TEST BETA SE LOG10P\n";
    int number = 0;
    for (const Marker& marker : all) {
        ++number;
        text += QStringLiteral("%1 %2 rs%3 A G 99 ADD 0.1 0.1 %4\n")
                    .arg(marker.chromosome)
                    .arg(marker.position)
                    .arg(number)
                    .arg(number % 40 == 0 ? QStringLiteral("NA") : QString::number(marker.negLog10))
                    .toUtf8();
    }
    return text;
}

QByteArray plain(const QList<Marker>& all) {
    QByteArray text = "chr\tpos\tsnp\tpval\r\n";
    int number = 0;
    for (const Marker& marker : all) {
        ++number;
        text += QStringLiteral("chr%1\t%2\trs%3\t%4\r\n")
                    .arg(marker.chromosome)
                    .arg(marker.position)
                    .arg(number)
                    .arg(number % 40 == 0 ? QStringLiteral("NA")
                                          : QString::number(std::pow(10, -marker.negLog10), 'g', 9))
                    .toUtf8();
    }
    return text;
}

// Boxes in the genome view, in pixels, and a peak in the chromosome view, in base pairs.
const QString pickFirst = "box 50 0 200 600", pickThird = "box 450 0 600 600";

QStringList cutPeak(const QString& name) {
    return {"dump all" + name,   "drag 1130000 6 1170000 37", "drop",
            "dump saved" + name, "click saveRemoveButton",    "name " + name,
            "click globalButton"};
}

// What is shown, as text that tells markers apart.
QStringList shown(const State& state) {
    QStringList texts;
    const QList<int> positions = state.integers("Pos_list");
    const QList<double> values = state.numbers("Value_list");
    for (qsizetype i = 0; i < positions.size(); ++i)
        texts.append(QStringLiteral("%1 %2").arg(positions[i]).arg(values[i], 0, 'g', 17));
    return texts;
}

} // namespace

bool CutSession::runTools(const DrivenRun& run, const QStringList& words) const {
    QProcess process;
    process.setWorkingDirectory(run.path(QString()));
    process.start(ToolsRun::program(), words);
    return process.waitForFinished() &&
           QTest::qVerify(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
                          "ends well", process.readAllStandardError().constData(), __FILE__,
                          __LINE__);
}

// The window opens it and shows leads on these chromosomes alone.
void CutSession::look(const DrivenRun& run, const QString& name,
                      const QByteArrayList& chromosomes) const {
    QVERIFY(runTools(run, {"check", name, "-q"}));
    QVERIFY(runTools(run, {"plot", name, "-q", "-o", name + ".png"}));
    QVERIFY(runTools(run, {"hits", name, "-q", "-o", "hits.tsv"}));
    QFile file(run.path("hits.tsv"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArrayList found;
    file.readLine();
    while (!file.atEnd())
        found.append(file.readLine().split('\t')[0].replace("chr", ""));
    QVERIFY2(found == chromosomes, found.join(' '));
}

void CutSession::nothingOfTheCutIsLeft_data() {
    QTest::addColumn<bool>("isPrepared");
    QTest::newRow("a file that was prepared") << true;
    QTest::newRow("a file as it stands") << false;
}

void CutSession::nothingOfTheCutIsLeft() {
    QFETCH(bool, isPrepared);
    Random random(runSeed());
    const QList<Marker> all = randomMarkers(random);
    const QStringList pickBoth{pickFirst, "dump first",  "click globalButton",
                               pickThird, "dump second", "click exitButton"};
    DrivenRun run;
    run.addFile("scan.txt", isPrepared ? regenie(all) : plain(all));
    const auto open = [&](const QString& name) {
        if (!isPrepared)
            return name;
        if (!runTools(run, {"prepare", name, "-o", name + ".txt"}))
            qFatal("cannot prepare");
        return name + ".txt";
    };
    const QString scan = open("scan.txt");
    look(run, scan, {"1", "2", "3"});
    QVERIFY(run.playTo(0, QStringList{"open " + scan, pickFirst} + cutPeak("a") +
                              QStringList{pickThird} + cutPeak("b") +
                              QStringList{"click exitButton"}));
    const State savedStates[] = {run.state("saveda"), run.state("savedb")};
    const State allStates[] = {run.state("alla"), run.state("allb")};

    QVERIFY(runTools(run, {"drop", "scan.txt", "a.txt", "b.txt", "-o", "clean.txt"}));
    QVERIFY(runTools(run, {"keep", "scan.txt", "a.txt", "b.txt", "-o", "cut.txt"}));
    const QString clean = open("clean.txt");
    look(run, clean, {"2"});
    QVERIFY(QImage(run.path(scan + ".png")) != QImage(run.path(clean + ".png")));
    QVERIFY(run.playTo(0, QStringList{"open " + clean} + pickBoth));
    const State cleanStates[] = {run.state("first"), run.state("second")};
    for (const int i : {0, 1}) {
        const QStringList saved = shown(savedStates[i]);
        QStringList rest = shown(allStates[i]);
        QVERIFY(saved.size() >= 15 && saved.size() < 30);
        for (const QString& marker : saved)
            QVERIFY(rest.removeOne(marker));
        QCOMPARE(shown(cleanStates[i]), rest);
    }
    QVERIFY(run.playTo(0, QStringList{"open " + open("cut.txt")} + pickBoth));
    QCOMPARE(shown(run.state("first")), shown(savedStates[0]));
    QCOMPARE(shown(run.state("second")), shown(savedStates[1]));
}

QTEST_MAIN(CutSession)
#include "tst_cut_session.moc"
