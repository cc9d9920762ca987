#include "driven_run.h"
#include "pages.h"
#include "tools_run.h"

#include <QDir>
#include <QLocale>
#include <QRegularExpression>
#include <QTest>

using namespace pages;

namespace {

QString guide() {
    return textOf(sourcePath(QStringLiteral("docs/guide.md")));
}

QString cleaning(const QString& heading) {
    return part(guide(), QStringLiteral("### ") + heading);
}

QString grouped(int position) {
    return QLocale(QLocale::English).toString(position);
}

QByteArrayList rowsOf(const QByteArray& table) {
    return table.trimmed().split('\n').mid(1);
}

} // namespace

// What the README and the guide say, followed in the real programs.
class GuideTest : public QObject {
    Q_OBJECT

private slots:
    void readmeIsTrue();
    void tourIsTrue();
    void cleaningIsTrue();
    void commasMarkNothing();
    void faultyNewFileEndsTheSession();
    void dialogListsTheLog();
    void picturesAreThere();
    void linksLeadSomewhere_data();
    void linksLeadSomewhere();

private:
    static void openScan(const DrivenRun& run);
};

void GuideTest::readmeIsTrue() {
    const ToolsRun run;
    QVERIFY(QFile::copy(QStringLiteral(PELMARK_EXAMPLES "/scan.regenie.gz"),
                        run.path("scan.regenie.gz")));
    const QStringList all = examples(textOf(sourcePath("README.md")));
    QVERIFY(!all.isEmpty());
    for (const QString& example : all)
        QCOMPARE(played(example, run.path({})), example);
    QVERIFY(!QImage(run.path("scan.png")).isNull());
}

// The box down to the floor leaves nothing of the locus.
void GuideTest::tourIsTrue() {
    DrivenRun run;
    run.setScreen(pictureScreen);
    QVERIFY(QDir(run.path({})).mkdir("scans"));
    run.addCopy("scans/genome_100k.txt", QStringLiteral(PELMARK_EXAMPLES "/genome_100k.txt"));
    QVERIFY(run.playTo(0, scenario("tour")));
    const State zoomed = run.state("zoomed");
    const QByteArrayList cut = rowsOf(run.content("chr6_cut.txt"));
    const QByteArrayList rest = rowsOf(run.content("chr6_rest.txt"));
    QCOMPARE(cut.constFirst().split('\t')[1].toInt(), zoomed.integer("realMinX"));
    QCOMPARE(cut.constLast().split('\t')[1].toInt(), zoomed.integer("realMaxX"));
    QVERIFY(!rest.isEmpty());
    for (const QByteArray& row : rest) {
        const int position = row.split('\t')[1].toInt();
        QVERIFY(position < zoomed.integer("realMinX") || position > zoomed.integer("realMaxX"));
    }
    // The margin is removed and not saved.
    const int all =
        run.state("chromosome").object()["Pos_list"].toString().section(u' ', 0, 0).toInt();
    QVERIFY(cut.size() + rest.size() < all);
    QVERIFY(run.exists("chr6_cut.png"));
}

// The guide's own commands on the example, then its steps in the window, then its commands on what
// the window saved.
void GuideTest::cleaningIsTrue() {
    DrivenRun run;
    run.setScreen(pictureScreen);
    run.addCopy("scan.regenie.gz", QStringLiteral(PELMARK_EXAMPLES "/scan.regenie.gz"));
    for (const QString& example : examples(cleaning("Prepare")) + examples(cleaning("Look")))
        QCOMPARE(played(example, run.path({})), example);
    QVERIFY(run.playTo(0, scenario("cleaning")));
    for (const QString& example : examples(cleaning("Drop")))
        QCOMPARE(played(example, run.path({})), example);

    const QString text = cleaning("Cut");
    const QString log = QString::fromUtf8(run.log()).trimmed().section(u'\n', -1);
    QVERIFY(text.contains(u'`' + log + u'`'));
    const State zoomed = run.state("chr12-zoomed");
    QVERIFY(text.contains(grouped(zoomed.integer("realMinX")) + " for this one marker"));
    const QString typed = run.state("chr12-marked").text("rangeStartEdit");
    QCOMPARE(
        typed,
        QStringLiteral("%1-%2").arg(zoomed.integer("realMinX")).arg(zoomed.integer("realMaxX")));
    QVERIFY(text.contains(u'`' + typed + u'`'));
    QVERIFY(run.state("chr12-marked").picture("shown") != run.state("chr12").picture("shown"));
    QVERIFY(text.contains("name the table after the chromosome: `chr12_cut`"));
    QCOMPARE(rowsOf(run.content("chr12_cut.txt")).size(), 1);
}

void GuideTest::openScan(const DrivenRun& run) {
    run.addFile("scan.txt", "chr pos p\n1 1000 0.1\n1 2000 0.01\n1 3000 0.5\n");
}

void GuideTest::commasMarkNothing() {
    DrivenRun run;
    openScan(run);
    QVERIFY(run.playTo(0, {"open scan.txt", "dump plain", "type rangeStartEdit 1,500-2,500",
                           "keys Alt+U", "dump commas", "type rangeStartEdit 1500-2500",
                           "keys Alt+U", "dump digits", "click exitButton"}));
    QCOMPARE(run.state("commas").picture("shown"), run.state("plain").picture("shown"));
    QVERIFY(run.state("digits").picture("shown") != run.state("plain").picture("shown"));
}

void GuideTest::faultyNewFileEndsTheSession() {
    DrivenRun run;
    openScan(run);
    run.addFile("bad.txt", "chr pos p\n1 1000 word\n");
    QVERIFY(run.playTo(1, {"open scan.txt", "click newFileButton", "open bad.txt"}));
}

void GuideTest::dialogListsTheLog() {
    DrivenRun run;
    openScan(run);
    run.addFile("scan.regenie.gz", "");
    QVERIFY(
        run.playTo(0, {"listing Pelmark_log.txt scan.txt", "open scan.txt", "click exitButton"}));
    QVERIFY(textOf(sourcePath("src/window/main.cpp")).contains("\"Image Files (*.txt *.csv)\""));
    QVERIFY(guide().contains("*Image Files*"));
}

void GuideTest::picturesAreThere() {
    QStringList shown = found(guide(), QStringLiteral("\\(pictures/([^)]*)\\)"));
    shown.sort();
    QCOMPARE(shown, QDir(sourcePath(QStringLiteral("docs/pictures"))).entryList(QDir::Files));
}

void GuideTest::linksLeadSomewhere_data() {
    QTest::addColumn<QString>("page");
    for (const char* page : {"README.md", "docs/guide.md", "docs/recipes.md", "docs/tools.md"})
        QTest::newRow(page) << page;
}

// To a heading, in this page or another, or to a file.
void GuideTest::linksLeadSomewhere() {
    QFETCH(QString, page);
    const QString path = sourcePath(page);
    for (const QString& link : found(textOf(path), QStringLiteral("\\]\\(([^)]*)\\)"))) {
        const QString file = link.section(u'#', 0, 0), anchor = link.section(u'#', 1);
        const QString target = file.isEmpty() ? path : QFileInfo(path).dir().filePath(file);
        QVERIFY2(QFileInfo::exists(target), qPrintable(link));
        QStringList anchors;
        for (const QString& title :
             anchor.isEmpty() ? QStringList() : found(textOf(target), "^##* (.*)$"))
            anchors.append(
                title.toLower().remove(QRegularExpression("[^\\w -]")).replace(u' ', u'-'));
        QVERIFY2(anchor.isEmpty() || anchors.contains(anchor), qPrintable(link));
    }
}

QTEST_GUILESS_MAIN(GuideTest)
#include "tst_guide.moc"
