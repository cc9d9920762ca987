#include "driven_run.h"
#include "samples.h"

#include <QJsonArray>
#include <QTest>

// The state before the first file, the window when first shown, and the ways to end the program.
class TestStartup : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void dialogComesBeforeWindow();
    void sessionBeforeFirstFile();
    void firstRedrawHasNoDataAndNoSize();
    void firstSightShowsPlot();
    void windowPlaceAndTitle();
    void checkBoxesAndFlags();
    void layoutOrder();
    void buttons_data();
    void buttons();
    void labelsAndBand();
    void metaObjectTable();
    void signalDoesNothing();
    void knownWarningOnce();
    void ends_data();
    void ends();
    void killedProcessLeavesItsLog();

private:
    DrivenRun m_run; // one run, which most tests examine
};

void TestStartup::initTestCase() {
    m_run.addFile("data.txt", samples::genomeTable());
    QVERIFY(
        m_run.playTo(0, {"dialog before", "open data.txt", "dump structure", "click exitButton"}));
}

void TestStartup::dialogComesBeforeWindow() {
    const State before = m_run.state("before");
    QCOMPARE(m_run.labels(), QStringList({"before", "first sight", "structure"}));
    QCOMPARE(before.window()["visible"].toBool(), false);
    QCOMPARE(before.dialog()["title"].toString(), "Welcome to  PELMARK !  Select File");
    QCOMPARE(before.dialog()["filters"].toArray(), QJsonArray({"Image Files (*.txt *.csv)"}));
    QCOMPARE(before.dialog()["directory"].toString(), QDir(m_run.path("")).absolutePath());
    QCOMPARE(before.dialog()["options"].toInt(), 0);
    QVERIFY(before.dialog()["opens"].toBool());
    QVERIFY(before.dialog()["parentIsWindow"].toBool());
    QCOMPARE(before.log(), logHeader);
}

void TestStartup::sessionBeforeFirstFile() {
    const State before = m_run.state("before");
    for (const char* name : {"line", "globaltimes", "save_counter", "file_index", "click_times",
                             "stepOK", "realMinX", "realMaxX", "fwidth", "fheight", "xmargin",
                             "xmargin2", "ymargin", "maxX", "GLOBAL_minX", "GLOBAL_maxX"})
        QVERIFY2(before.integer(name) == 0, name);
    for (const char* name :
         {"realMaxY", "minY", "maxY", "pixPerX", "pixPerY", "GLOBAL_pixPerX", "GLOBAL_pixPerY"})
        QVERIFY2(before.number(name) == 0.0, name);
    QCOMPARE(before.integer("minX"), -1);
    QCOMPARE(before.integer("selected_chromosome"), -1);
    QCOMPARE(before.bytes("defaultname"), "file" + QByteArray(96, '\0'));
    QCOMPARE(before.bytes("filename"), QByteArray(200, '\0'));
    QCOMPARE(before.bytes("shortname"), QByteArray(50, '\0'));
    for (const char* name : {"Pos_list", "Value_list", "Pos_list2", "Value_list2", "Start_index",
                             "End_index", "Start_value", "End_value", "Color_value", "Tag"})
        QVERIFY2(before.object()[name].toArray().isEmpty(), name);
    QCOMPARE(before.memberTexts("fileList"), QStringList());
    QCOMPARE(before.window()["chosenPath"].toString(), "");
    QCOMPARE(before.window()["screenRect"].toArray(), QJsonArray({0, 0, 800, 800}));
}

void TestStartup::firstRedrawHasNoDataAndNoSize() {
    const State before = m_run.state("before");
    QCOMPARE(before.integer("stripes"), 1);
    QCOMPARE(before.integer("globaldisplay"), 0);
    QCOMPARE(before.text("hintLabel"), "");
    QCOMPARE(before.text("nameLabel"), "");
    QVERIFY(before.picture("plotPixmap").startsWith("0x0 "));
    QVERIFY(before.picture("genomePixmap").startsWith("0x0 "));
    for (const char* name : {"checkBox1", "checkBox2", "globalButton", "unzoomButton",
                             "removeButton", "saveRemoveButton", "rangeStartEdit", "rangeEndEdit"})
        QVERIFY2(before.isVisible(name), name);
}

void TestStartup::firstSightShowsPlot() {
    const State sight = m_run.state("first sight");
    const QString expected =
        picture(expectedGenomePlot(samples::genomeView(), samples::genomeLook("data.txt")));
    QCOMPARE(sight.picture("shown"), expected);
    QCOMPARE(sight.integer("globaldisplay"), 1);
    QCOMPARE(sight.integer("globaltimes"), 1);
}

void TestStartup::windowPlaceAndTitle() {
    const State state = m_run.state("structure");
    QCOMPARE(state.point("position"), QPoint(5, 5));
    QCOMPARE(state.window()["title"].toString(), "PELMARK 0.1 by the Pelmark authors");
    QVERIFY(state.window()["isPlainWindow"].toBool());
    QVERIFY(!state.window()["mouseTracking"].toBool());
}

void TestStartup::checkBoxesAndFlags() {
    const State sight = m_run.state("first sight");
    QVERIFY(!sight.widget("checkBox1")["checked"].toBool());
    QVERIFY(sight.widget("checkBox2")["checked"].toBool());
    QCOMPARE(sight.text("checkBox1") + sight.text("checkBox2"), "");
    QCOMPARE(sight.text("rangeStartEdit") + sight.text("rangeEndEdit"), "");
    QCOMPARE(sight.integer("line"), 0);
    QCOMPARE(sight.integer("stripes"), 1);
}

void TestStartup::layoutOrder() {
    const State state = m_run.state("structure");
    QCOMPARE(state.object()["layout"].toString(),
             "V:mainLayout(H:topLayout(H:topSpareLayout(),V:imageLayout(imageLabel)),"
             "V:middleLayout(H:middleSpareLayout(),H:infoLayout(nameLabel,separator,checkBox1,"
             "hintLabel,checkBox2,separator,rangeStartEdit,rangeEndEdit)),"
             "H:bottomLayout(H:buttonLayout(newFileButton,globalButton,unzoomButton,removeButton,"
             "saveButton,saveRemoveButton,exitButton)))");
    QCOMPARE(state.object()["layoutExceptions"].toArray(), QJsonArray());
}

void TestStartup::buttons_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("colors");
    const auto row = [](const char* name, const QString& text, const QString& colors) {
        QTest::newRow(name) << text << colors;
    };
    row("newFileButton", "&New File", "background:lightblue; color: black;");
    row("globalButton", "&Global", "background:pink; color: black;");
    row("unzoomButton", "&Unzoom", "background:green; color: black;");
    row("removeButton", "&Remove Selection", "background:green; color:black;");
    row("saveButton", "&Save", "background:orange; color: black;");
    row("saveRemoveButton", "Save &and Remove", "background:orange; color:black;");
    row("exitButton", "&Exit", "background:darkred; color:white;");
}

void TestStartup::buttons() {
    QFETCH(QString, text);
    QFETCH(QString, colors);
    const QJsonObject button = m_run.state("structure").widget(QTest::currentDataTag());
    QCOMPARE(button["text"].toString(), text);
    QCOMPARE(button["styleSheet"].toString(), colors + " font-size:12px;font-weight:bold;");
}

void TestStartup::labelsAndBand() {
    const State state = m_run.state("structure");
    QCOMPARE(state.widget("imageLabel")["background"].toString(), "#ff969696");
    QVERIFY(state.widget("imageLabel")["filled"].toBool());
    QCOMPARE(state.widget("nameLabel")["background"].toString(), "#ffa0a0a4");
    QVERIFY(state.widget("nameLabel")["filled"].toBool());
    QCOMPARE(state.widget("nameLabel")["format"].toInt(), static_cast<int>(Qt::PlainText));
    QVERIFY(!state.widget("hintLabel")["filled"].toBool());
    QCOMPARE(state.window()["bandShape"].toInt(), 1); // QRubberBand::Rectangle
    QCOMPARE(state.window()["bandParent"].toString(), "imageLabel");
    QVERIFY(!state.isVisible("rubberBand"));
}

void TestStartup::metaObjectTable() {
    QStringList methods;
    for (const QJsonValue& method : m_run.state("structure").object()["methods"].toArray())
        methods.append(method.toString());
    QCOMPARE(
        methods,
        QStringList({"0 protected signal void getSize()", "1 public slot void checkBox1Action()",
                     "2 public slot void checkBox2Action()", "3 public slot void saveAndRemove()",
                     "4 public slot void Save()", "5 public slot bool makeFile()",
                     "6 public slot void getFilename()", "7 public slot void displayGlobal()",
                     "8 public slot void displayLocal()", "9 public slot void reloadPhoto()",
                     "10 public slot void reloadPhoto0()", "11 public slot void showRemaining()",
                     "12 public slot void removeSelection()"}));
}

void TestStartup::signalDoesNothing() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"dump a", "invoke getSize", "dump b"}));
    QCOMPARE(run.state("b").unlabelled(), run.state("a").unlabelled());
}

void TestStartup::knownWarningOnce() {
    QVERIFY(m_run.hasKnownWarning());
}

void TestStartup::ends_data() {
    QTest::addColumn<QString>("command");
    QTest::newRow("button") << "click exitButton";
    QTest::newRow("mnemonic") << "keys Alt+E";
    QTest::newRow("closed window") << "close";
}

void TestStartup::ends() {
    QFETCH(QString, command);
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    QVERIFY(run.playTo(0, {"open data.txt", command}));
    QCOMPARE(run.log(), QByteArray(logHeader) + "Get GLOBAL\n");
}

void TestStartup::killedProcessLeavesItsLog() {
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    run.play({"open data.txt", "kill"});
    QCOMPARE(run.exitStatus(), -1);
    QCOMPARE(run.log(), QByteArray(logHeader) + "selected chromosome by getManhattan 7\n");
}

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
