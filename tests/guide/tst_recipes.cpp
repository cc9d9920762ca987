#include "driven_run.h"
#include "pages.h"

#include <QDir>
#include <QProcess>
#include <QTest>

using namespace pages;

namespace {

const QString toolOutputs = QStringLiteral(PELMARK_GUIDE_DATA "/tool_outputs/");

QString recipes() {
    return textOf(sourcePath(QStringLiteral("docs/recipes.md")));
}

// Makes a file of a command's output.
void make(const QString& path, const QString& program, const QStringList& words) {
    QProcess process;
    process.setStandardOutputFile(path);
    process.start(program, words);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("cannot make %s", qPrintable(path));
}

} // namespace

// The page of recipes says what the programs do.
class Recipes : public QObject {
    Q_OBJECT

private slots:
    void examplesAreTrue();
    void formatsAreCurrent();

private:
    static void layOutFiles(const DrivenRun& run);
};

// Those that the page's commands work on.
void Recipes::layOutFiles(const DrivenRun& run) {
    for (const char* name : {"genome_100k.txt", "scan.regenie.gz"})
        run.addCopy(name, QStringLiteral(PELMARK_EXAMPLES "/") + name);
    const QDir folder(QStringLiteral(PELMARK_GUIDE_DATA "/recipes"));
    for (const QString& name : folder.entryList(QDir::Files))
        run.addCopy(name, folder.filePath(name));
    for (const char* name : {"scans", "traits", "pieces"})
        QVERIFY(QDir(run.path({})).mkdir(name));
    run.addCopy("scans/genome_100k.txt", QStringLiteral(PELMARK_EXAMPLES "/genome_100k.txt"));
    for (int i = 1; i <= 20; ++i)
        make(run.path(QStringLiteral("traits/trait%1.regenie.gz").arg(i, 2, 10, QChar(u'0'))),
             "gzip", {"-c", toolOutputs + "trait.regenie"});
    for (const char* chromosome : {"1", "2", "22"})
        make(run.path(QStringLiteral("pieces/chr%1.regenie").arg(chromosome)), "grep",
             {"-E", QStringLiteral("^(CHROM|%1) ").arg(chromosome), toolOutputs + "trait.regenie"});
}

// In their order, each on what those before it left. The guide's tour makes the first table.
void Recipes::examplesAreTrue() {
    DrivenRun run;
    layOutFiles(run);
    run.setScreen(pictureScreen);
    QVERIFY(run.playTo(0, scenario("tour")));
    const QStringList all = examples(recipes());
    QVERIFY(all.size() > 8);
    for (const QString& example : all)
        QCOMPARE(played(example, run.path({})), example);
}

void Recipes::formatsAreCurrent() {
    QProcess program;
    program.start(QStringLiteral(FORMATS_TABLE), {sourcePath(QStringLiteral("docs/recipes.md"))});
    QVERIFY(program.waitForFinished(120'000));
    QCOMPARE(program.exitCode(), 0);
    const QStringList made = QString::fromUtf8(program.readAllStandardOutput()).split(u'\n');
    const QStringList page = recipes().split(u'\n');
    for (qsizetype i = 0; i < qMin(made.size(), page.size()); ++i)
        QVERIFY2(page[i] == made[i], qPrintable("run scripts/formats: " + made[i]));
    QCOMPARE(page.size(), made.size());
}

QTEST_GUILESS_MAIN(Recipes)
#include "tst_recipes.moc"
