#include "driven_run.h"
#include "samples.h"

#include <QDir>
#include <QMap>
#include <QTest>
#include <cmath>

// Saved tables and images: their names, their contents, and what "Save and Remove" leaves.
class TestSaving : public QObject {
    Q_OBJECT

private slots:
    void names_data();
    void names();
    void table();
    void dialogTexts();
    void imageIsPlot();
    void zoomedPointsReplaceOlderFiles();
    void labelIsAlwaysFirst();
    void textsAreInSystemsEncoding();
    void saveAndRemove();
    void emptyNameSavesNothing();
    void cancelChangesNothing();
    void proposedName();
    void proposedNameCutInsideCharacter();
    void savesBesideLogNotBesideData();
    void imageThatCannotBeWritten();
    void genomeView();
    void saveAndRemoveInGenomeView();
    void saveWithoutGuard();
    void guardOfWriter();
    void resultOfWriter();
    void writerInGenomeView();
    void readBackIn();
};

static const QStringList dataAndLog{"data.txt", "Pelmark_log.txt"};

static QStringList filesOf(const DrivenRun& run) {
    return QDir(run.path("")).entryList(QDir::Files | QDir::Hidden, QDir::Name | QDir::IgnoreCase);
}

void TestSaving::names_data() {
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("image");
    const auto row = [](const char* name, const QString& table, const QString& image) {
        QTest::newRow(name) << table << image;
    };
    row("result", "result.txt", "result.png");
    row("result.txt", "result.txt", "result.png");
    row("run1.TXT", "run1.TXT.txt", "run1.png");
    row("my.data", "my.data.txt", "my.png");
    row(".hidden", ".hidden.txt", ".png");
    row("../out/run", "../out/run.txt", ".png");
    row("sub/run", "sub/run.txt", "sub/run.png");
    row("two words", "two words.txt", "two words.png");
}

void TestSaving::names() {
    QFETCH(QString, table);
    QFETCH(QString, image);
    DrivenRun run;
    QVERIFY(QDir(run.path("")).mkpath("../out"));
    QVERIFY(QDir(run.path("")).mkpath("sub"));
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QVERIFY(run.playOn(samples::chromosomeTable(), {"click saveButton", "name " + name, "dump a"}));
    QVERIFY(run.content(table).startsWith("Chr\tPosition\tP\t-log10(P)\n"));
    QCOMPARE(picture(run.image(image)), run.state("a").picture("shown"));
    QCOMPARE(run.state("a").window()["chosenPath"].toString(), name);
    QStringList expected = dataAndLog;
    for (const QString& file : {table, image})
        if (!file.contains(u'/'))
            expected.append(file);
    expected.sort(Qt::CaseInsensitive);
    QCOMPARE(filesOf(run), expected);
}

void TestSaving::table() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::table({{"X", 100, "1"},
                                       {"X", 1234567890, "5e-8"},
                                       {"X", 300, "0.5"},
                                       {"X", -400, "1e-300"},
                                       {"X", 500, "10"},
                                       {"X", 600, "0.123456789"}}),
                       {"click saveButton", "name t"}));
    QCOMPARE(run.content("t.txt"), "Chr\tPosition\tP\t-log10(P)\n"
                                   "X\t100\t1\t0\n"
                                   "X\t1234567890\t5e-08\t7.30103\n"
                                   "X\t300\t0.5\t0.30103\n"
                                   "X\t-400\t1e-300\t300\n"
                                   "X\t500\t10\t-1\n"
                                   "X\t600\t0.123457\t0.908485\n");
}

void TestSaving::dialogTexts() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(), {"click saveButton", "dialog a", "namecancel"}));
    const QJsonObject dialog = run.state("a").dialog();
    QCOMPARE(dialog["title"].toString(), "Enter new filename");
    QCOMPARE(dialog["prompt"].toString(), "File name * or *.txt");
    QCOMPARE(dialog["proposed"].toString(), "file");
    QVERIFY(dialog["normal"].toBool());
    QVERIFY(dialog["parentIsWindow"].toBool());
}

void TestSaving::imageIsPlot() {
    DrivenRun run;
    QVERIFY(
        run.playOn(samples::chromosomeTable(), {"click checkBox1", "click saveButton", "name a"}));
    QCOMPARE(picture(run.image("a.png")),
             picture(expectedChromosomePlot(samples::chromosomeView(), {{}, true, true})));
}

void TestSaving::zoomedPointsReplaceOlderFiles() {
    DrivenRun run;
    run.addFile("old.txt", QByteArray(5000, 'x'));
    run.addFile("old.png", "no image");
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"box 129 180 429 420", "click saveButton", "name old", "dump a"}));
    QCOMPARE(run.content("old.txt"), "Chr\tPosition\tP\t-log10(P)\n"
                                     "R\t1100\t1e-14\t14\nR\t1200\t1e-25\t25\n"
                                     "R\t1300\t1e-36\t36\nR\t1400\t1e-14\t14\n");
    QCOMPARE(picture(run.image("old.png")), run.state("a").picture("shown"));
    QCOMPARE(run.state("a").integers("Pos_list"), QList<int>({1100, 1200, 1300, 1400}));
    QCOMPARE(run.state("a").integers("Pos_list2").size(), 7);
}

void TestSaving::labelIsAlwaysFirst() {
    DrivenRun run;
    QVERIFY(
        run.playOn(samples::genomeTable(), {"box 195 0 209 600", "click saveButton", "name b"}));
    QCOMPARE(run.content("b.txt"), "Chr\tPosition\tP\t-log10(P)\nA\t500\t0.0001\t4\n"
                                   "A\t1500\t3e-09\t8.52288\nA\t2500\t5e-05\t4.30103\n");
}

void TestSaving::textsAreInSystemsEncoding() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::table({{"\xc3\xa9", 100, "0.1"}, {"\xc3\xa9", 200, "0.01"}}),
                       {"click saveButton", "name t"}));
    QCOMPARE(run.content("t.txt"), "Chr\tPosition\tP\t-log10(P)\n"
                                   "\xc3\xa9\t100\t0.1\t1\n\xc3\xa9\t200\t0.01\t2\n");
    QCOMPARE(run.log(), QByteArray(logHeader) + "selected chromosome by getManhattan \xc3\xa9\n");
}

void TestSaving::saveAndRemove() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(), {"box 129 180 429 420", "dump zoomed",
                                               "click saveRemoveButton", "name z", "dump a"}));
    QCOMPARE(run.content("z.txt").count('\n'), 5);
    QCOMPARE(picture(run.image("z.png")), run.state("zoomed").picture("shown"));
    QCOMPARE(run.state("a").integers("Pos_list"), QList<int>({1000, 1500, 1582}));
    QCOMPARE(run.state("a").integers("Pos_list2"), QList<int>({1000, 1500, 1582}));
    QCOMPARE(run.state("a").integer("globaltimes"), 4);
}

// "Save and Remove" still removes.
void TestSaving::emptyNameSavesNothing() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(),
                       {"click saveButton", "name ", "dump saved", "box 129 180 429 420",
                        "click saveRemoveButton", "name ", "dump removed"}));
    QCOMPARE(run.state("saved").integers("Pos_list").size(), 7);
    QCOMPARE(run.state("saved").window()["chosenPath"].toString(), "");
    QCOMPARE(run.state("removed").integers("Pos_list2"), QList<int>({1000, 1500, 1582}));
    QCOMPARE(run.state("removed").bytes("defaultname").left(6), QByteArray("file\0\0", 6));
    QCOMPARE(filesOf(run), dataAndLog);
}

void TestSaving::cancelChangesNothing() {
    DrivenRun run;
    QVERIFY(
        run.playOn(samples::rulerTable(),
                   {"box 129 180 429 420", "dump a", "click saveRemoveButton", "namecancel typed",
                    "dump b", "click saveButton", "dialog c", "namecancel typed"}));
    QCOMPARE(run.state("b").window()["chosenPath"].toString(), "");
    QCOMPARE(run.state("c").dialog()["proposed"].toString(), "file");
    for (const char* name : {"Pos_list", "Pos_list2", "globaltimes", "defaultname", "minX"})
        QCOMPARE(run.state("b").object()[name], run.state("a").object()[name]);
    QCOMPARE(filesOf(run), dataAndLog);
}

void TestSaving::proposedName() {
    const QString name = "abcdefghijklmnopqrstuvwxyz0123456789ABCDEFGHIJKLMNOPQRST.txt"; // 60 bytes
    DrivenRun run;
    QVERIFY(
        run.playOn(samples::chromosomeTable(),
                   {"click saveButton", "name " + name, "dump long", "click saveButton", "dialog a",
                    "name x.txt", "dump short", "click saveButton", "dialog b", "namecancel"}));
    QVERIFY(run.exists(name));
    QCOMPARE(run.state("a").dialog()["proposed"].toString(), name.left(50));
    QCOMPARE(run.state("long").bytes("defaultname"),
             name.toLatin1().left(50) + QByteArray(50, '\0'));
    QCOMPARE(run.state("b").dialog()["proposed"].toString(), "x.txt");
    QCOMPARE(run.state("short").bytes("defaultname"), "x.txt" + QByteArray(95, '\0'));
}

void TestSaving::proposedNameCutInsideCharacter() {
    const QString name = QString(49, u'n') + QChar(0xe4) + "x";
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(), {"click saveButton", "name " + name,
                                                    "click saveButton", "dialog a", "namecancel"}));
    QVERIFY(run.exists(name + ".txt"));
    QCOMPARE(run.state("a").dialog()["proposed"].toString(), QString(49, u'n') + QChar(0xfffd));
    QCOMPARE(run.state("a").bytes("defaultname").left(51), QByteArray(49, 'n') + '\xc3' + '\0');
}

void TestSaving::savesBesideLogNotBesideData() {
    DrivenRun run;
    QVERIFY(QDir(run.path("")).mkdir("data"));
    run.addFile("data/data.txt", samples::chromosomeTable());
    QVERIFY(
        run.playTo(0, {"open data/data.txt", "click saveButton", "name t", "click exitButton"}));
    QVERIFY(run.exists("t.txt"));
    QVERIFY(run.exists("t.png"));
    QVERIFY(!run.exists("data/t.txt"));
}

void TestSaving::imageThatCannotBeWritten() {
    DrivenRun run;
    QVERIFY(QDir(run.path("")).mkdir("t.png"));
    QVERIFY(run.playOn(samples::rulerTable(), {"click saveRemoveButton", "name t", "dump a"}));
    QCOMPARE(run.content("t.txt").count('\n'), 8);
    QCOMPARE(run.state("a").integers("Pos_list2"), QList<int>());
    QCOMPARE(run.log(), QByteArray(logHeader) + "selected chromosome by getManhattan R\n");
}

void TestSaving::genomeView() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"dump a", "click saveButton", "dump b"}));
    QCOMPARE(picture(run.image("data.txt.png")), run.state("a").picture("genomePixmap"));
    QCOMPARE(run.state("b").unlabelled(), run.state("a").unlabelled());
    QCOMPARE(filesOf(run), QStringList({"data.txt", "data.txt.png", "Pelmark_log.txt"}));
}

// The button is hidden there, but the command saves the image unless the view starts below 0.
void TestSaving::saveAndRemoveInGenomeView() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"dump a", "invoke saveAndRemove"}));
    QCOMPARE(run.state("a").integer("minX"), -6);
    QVERIFY(!run.exists("data.txt.png"));
    QVERIFY(run.playTo(0, {"open data.txt", "dump a", "set minX 0", "invoke saveAndRemove",
                           "dump b", "click exitButton"}));
    QCOMPARE(picture(run.image("data.txt.png")), run.state("a").picture("shown"));
    QCOMPARE(run.state("b").integers("Pos_list2"), samples::genomeCoordinates());
    QCOMPARE(run.state("b").integer("globaltimes"), 1);
}

void TestSaving::saveWithoutGuard() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::table({{"1", 1, "0.1"}, {"1", 1000, "0.01"}}),
                       {"dump a", "click saveButton", "name t"}));
    QCOMPARE(run.state("a").integer("minX"), -48);
    QCOMPARE(run.content("t.txt").count('\n'), 3);
}

void TestSaving::guardOfWriter() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::rulerTable(), {"set save_counter 1", "invoke makeFile",
                                               "click saveRemoveButton", "dump a"}));
    QVERIFY(run.labels().contains("true"));
    QCOMPARE(run.state("a").integer("save_counter"), 1);
    QCOMPARE(run.state("a").integers("Pos_list2"), QList<int>());
    QCOMPARE(filesOf(run), dataAndLog);
}

void TestSaving::resultOfWriter() {
    DrivenRun run;
    const QMap<QString, QString> results{
        {"name t", "true"}, {"name ", "true"}, {"namecancel x", "false"}};
    for (const QString& answer : results.keys()) {
        QVERIFY(run.playOn(samples::rulerTable(), {"invoke makeFile", answer}));
        QCOMPARE(run.labels().last(), results[answer]);
    }
}

// It always writes the chromosome's plot, even while the genome view is shown.
void TestSaving::writerInGenomeView() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"box 195 0 209 600", "dump b", "click globalButton",
                                                "invoke makeFile", "name t"}));
    QCOMPARE(picture(run.image("t.png")), run.state("b").picture("shown"));
    QCOMPARE(run.content("t.txt").count('\n'), 4);
}

// A saved table is itself a data file, with the same positions and with values to six digits.
void TestSaving::readBackIn() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::chromosomeTable(),
                       {"dump a", "click saveButton", "name t", "click newFileButton", "open t.txt",
                        "dump b", "click saveButton", "name u"}));
    const State first = run.state("a"), again = run.state("b");
    QCOMPARE(again.integers("Pos_list"), first.integers("Pos_list"));
    QCOMPARE(again.texts("Tag"), first.texts("Tag"));
    QCOMPARE(again.text("nameLabel"), "t.txt");
    for (qsizetype i = 0; i < first.numbers("Value_list").size(); ++i)
        QVERIFY(std::abs(again.numbers("Value_list")[i] - first.numbers("Value_list")[i]) < 1e-5);
    QCOMPARE(run.content("u.txt"), run.content("t.txt"));
}

QTEST_MAIN(TestSaving)
#include "tst_saving.moc"
