#include "driven_run.h"
#include "samples.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTest>
#include <QUrl>
#include <cstdio>

// Data files and folders of any name that a file may have.
class Names : public QObject {
    Q_OBJECT

private slots:
    void typedName_data();
    void typedName();
    void refusedName_data();
    void refusedName();
    void pickedName_data();
    void pickedName();
    void everyLength();
    void pathLength_data();
    void pathLength();
    void bytesThatAreNoText();
    void folder_data();
    void folder();
    void savedName_data();
    void savedName();
};

namespace {

// As the program keeps a name: its first 30 bytes.
QString shortened(const QString& name) {
    return QString::fromUtf8(name.toUtf8().left(30));
}

// The file was opened, and its name is shown and kept as it is.
void checkOpened(const DrivenRun& run, const QString& path) {
    const State state = run.state("opened");
    const QString name = QFileInfo(path).fileName();
    QCOMPARE(state.text("nameLabel"), shortened(name));
    QCOMPARE(state.widget("nameLabel")["format"].toInt(), int(Qt::PlainText));
    QCOMPARE(state.window()["chosenPath"].toString(), path);
    QCOMPARE(state.texts("Tag"), QStringList({"A", "B", "C"}));
    QVERIFY(run.log().startsWith(logHeader));
    // The genome plot is saved under the file's name, in the working folder.
    QCOMPARE(run.image(shortened(name) + ".png").size(), ExpectedView::plotSize);
}

const QStringList toTheEnd{"dump opened", "click saveButton", "dump saved", "click exitButton"};

void addNames(std::initializer_list<const char*> names) {
    QTest::addColumn<QString>("name");
    for (const char* name : names)
        QTest::newRow(QUrl::toPercentEncoding(QString::fromUtf8(name)).constData())
            << QString::fromUtf8(name);
}

} // namespace

void Names::typedName_data() {
    addNames({"x.txt",
              " space first.txt",
              "space last .txt",
              "two  spaces.csv",
              "'quoted'.txt",
              "<b>bold.txt",
              "a&amp;b.txt",
              "&Save.txt",
              "a..b.txt",
              "%1%2%n.txt",
              "%41.txt",
              "*.txt",
              "[a].txt",
              "a;b.txt",
              "a|b.txt",
              "back\\slash.txt",
              "$HOME.txt",
              "-o.txt",
              "tab\there.txt",
              "染色體.txt",
              "été.txt",
              "🧬.txt",
              "cut inside of the 30th byte é.txt",
              "Pelmark.TXT",
              "~.txt",
              "#1.txt",
              "http:.txt"});
}

void Names::typedName() {
    QFETCH(QString, name);
    DrivenRun run;
    run.addFile(name, samples::genomeTable());
    QVERIFY(run.playTo(0, QStringList{"open " + run.path(name)} + toTheEnd));
    checkOpened(run, run.path(name));
}

// What the dialog does not list it does not open either.
void Names::refusedName_data() {
    addNames({"x", "..txt.txt", "...txt", ".txt", "no dot", "dot last.", "table.tsv"});
}

void Names::refusedName() {
    QFETCH(QString, name);
    DrivenRun run;
    run.addFile(name, samples::genomeTable());
    QVERIFY(run.playTo(1, {"open " + run.path(name), "cancel"}));
    QCOMPARE(run.log(), QByteArray(logHeader) + "Input file problem!\n");
}

// The dialog's field takes quotes for a list of names, and has no line ends.
void Names::pickedName_data() {
    addNames({"quote\"d.txt", "\"\".txt", "line\nend.txt", "carriage\rreturn.txt", "\n.txt",
              "bell\a.txt", "two words.csv", "染色體.txt"});
}

void Names::pickedName() {
    QFETCH(QString, name);
    DrivenRun run;
    run.addFile(name, samples::genomeTable());
    QVERIFY(run.playTo(0, QStringList{"pick " + QUrl::toPercentEncoding(name)} + toTheEnd));
    checkOpened(run, run.path(name));
}

// A path of up to 200 bytes is kept whole; a longer one is cut and is then that of no file.
void Names::everyLength() {
    for (int length = 5; length <= 255; length += 10) {
        DrivenRun run;
        const QString name = QString(length - 4, u'n') + ".txt";
        run.addFile(name, samples::genomeTable());
        const bool fits = run.path(name).toUtf8().size() <= 200;
        QVERIFY(run.playTo(fits ? 0 : 1, QStringList{"open " + run.path(name)} +
                                             (fits ? toTheEnd : QStringList())));
        if (fits)
            checkOpened(run, run.path(name));
        else
            QCOMPARE(run.log(), QByteArray(logHeader) + "Cannot open data file!\n");
    }
}

void Names::pathLength_data() {
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("isOpened");
    QTest::newRow("199") << 199 << true;
    QTest::newRow("200") << 200 << true;
    QTest::newRow("201") << 201 << false;
    QTest::newRow("202") << 202 << false;
}

void Names::pathLength() {
    QFETCH(int, bytes);
    QFETCH(bool, isOpened);
    DrivenRun run;
    const auto missing = bytes - run.path(".txt").toUtf8().size();
    const QString name = QString(missing, u'p') + ".txt";
    QCOMPARE(run.path(name).toUtf8().size(), bytes);
    run.addFile(name, samples::genomeTable());
    QVERIFY(run.playTo(isOpened ? 0 : 1,
                       QStringList{"open " + name} + (isOpened ? toTheEnd : QStringList())));
    if (!isOpened) {
        QCOMPARE(run.log(), QByteArray(logHeader) + "Cannot open data file!\n");
        return;
    }
    checkOpened(run, run.path(name));
    QCOMPARE(run.state("opened").bytes("filename"),
             run.path(name).toUtf8().leftJustified(200, '\0'));
    QVERIFY(run.state("opened").memberTexts("fileList").contains(run.path(name)));
}

// Qt cannot name such a file, so it cannot be opened. It does no harm to its siblings.
void Names::bytesThatAreNoText() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    const QByteArray name = QFile::encodeName(run.path("")) + "bytes \xff\xfe\xc3.txt";
    QVERIFY(QFile::copy(run.path("data.txt"), run.path("copy.txt")));
    QCOMPARE(std::rename(QFile::encodeName(run.path("copy.txt")).constData(), name.constData()), 0);
    // Nor can Qt remove it with the folder.
    const auto away = qScopeGuard([&] { std::remove(name.constData()); });
    QVERIFY(run.playTo(0, QStringList{"open data.txt"} + toTheEnd));
    checkOpened(run, run.path("data.txt"));
    QCOMPARE(run.state("opened").integer("stepOK"), 1);
    QVERIFY(run.playTo(1, {"open " + QString::fromUtf8(name), "cancel"}));
    QCOMPARE(run.log(), QByteArray(logHeader) + "Input file problem!\n");
}

void Names::folder_data() {
    addNames({"x", "two  words", " ", "dot.txt", "...", "<i>markup", "\"quoted\"", "line\nend", "'",
              "&", "%1", "染色體", ".hidden", "back\\slash", "~"});
}

void Names::folder() {
    QFETCH(QString, name);
    DrivenRun run;
    QVERIFY(QDir(run.path("")).mkdir(name));
    run.addFile(name + "/data.txt", samples::genomeTable());
    run.addFile(name + "/other.csv", "");
    // From within it, so that its name is not typed.
    run.setWorkingFolder(name);
    QVERIFY(run.playTo(0, QStringList{"pick data.txt"} + toTheEnd));
    const State state = run.state("opened");
    QCOMPARE(state.window()["startDir"].toString(), run.path(name));
    for (const char* file : {"/data.txt", "/other.csv", "/Pelmark_log.txt"})
        QVERIFY(state.memberTexts("fileList").contains(run.path(name + file)));
    QCOMPARE(run.image(name + "/data.txt.png").size(), ExpectedView::plotSize);
}

void Names::savedName_data() {
    addNames({"x", " ", "two  words", "a;b", "<b>bold", "\"quoted\"", "'", "&name", "%1%2",
              "染色體", "...", "a.b.c", "back\\slash", "~", "*", "-o", "$HOME"});
}

void Names::savedName() {
    QFETCH(QString, name);
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    QVERIFY(run.playTo(0, {"open data.txt", "click saveButton", "name " + name, "dump saved",
                           "click exitButton"}));
    QCOMPARE(run.content(name + ".txt").count('\n'), samples::chromosome().size() + 1);
    QCOMPARE(run.image(name.section(u'.', 0, 0) + ".png").size(), ExpectedView::plotSize);
}

QTEST_GUILESS_MAIN(Names)
#include "tst_names.moc"
