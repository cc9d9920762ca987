#include "driven_run.h"
#include "samples.h"

#include <QTest>

// The driver itself: a scenario that asks for what is not there fails at that line, and boxes in
// data coordinates take the data they name.
class TestDriver : public QObject {
    Q_OBJECT

private slots:
    void mistakeIsNamed_data();
    void mistakeIsNamed();
    void unknownCommandPlaysNothing();
    void boxesInDataCoordinates();
    void shotIsOfTheWindow();
};

void TestDriver::mistakeIsNamed_data() {
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* command, const char* reason) {
        QTest::newRow(command) << QString(reason);
    };
    row("click savButton", "no widget \"savButton\"");
    row("click unzoomButton", "the widget is hidden");
    row("type saveButton 1-2", "\"saveButton\" is not a QLineEdit");
    row("set minY 7", "no variable \"minY\"");
    row("set minX seven", "\"seven\" is not a whole number");
    row("invoke makeFil", "no such method");
    row("box 1 2 3", "word 5 is missing");
    row("box 1 2 3 4 lef", "no mouse button \"lef\"");
    row("drag D@0 1 D@100 2", "no chromosome \"D\"");
    row("drag A@x 1 A@100 2", "\"x\" is not a number");
    row("shot no/such/folder.png", "cannot save no/such/folder.png");
}

void TestDriver::mistakeIsNamed() {
    QFETCH(QString, reason);
    const QString command = QTest::currentDataTag();
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    run.play({"open data.txt", command, "click exitButton"});
    QCOMPARE(run.exitStatus(), 70);
    QCOMPARE(run.complaints().constLast(), "driver: script line 2: " + command + ": " + reason);
}

void TestDriver::unknownCommandPlaysNothing() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    run.play({"open data.txt", "dump a", "clik exitButton"});
    QCOMPARE(run.exitStatus(), 70);
    QCOMPARE(run.complaints(),
             QStringList("driver: script line 3: clik exitButton: no command \"clik\""));
    QCOMPARE(run.labels(), QStringList());
}

void TestDriver::boxesInDataCoordinates() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable() +
                           samples::chromosomeTable().replace("chr\tpos\tpval\n", ""),
                       {"drag 7@10 1 7@90 7", "drop", "dump picked", "drag 130000 8 170000 2.5",
                        "drop", "dump zoomed"}));
    QCOMPARE(run.state("picked").integers("Pos_list"), samples::positions(samples::chromosome()));
    QCOMPARE(run.state("zoomed").integers("Pos_list"),
             QList<int>({140000, 150000, 151000, 160000}));
}

void TestDriver::shotIsOfTheWindow() {
    DrivenRun run;
    QVERIFY(run.playOn(samples::genomeTable(), {"dump a", "shot a.png", "grab plot.png"}));
    const QRect plot(run.state("a").geometry("imageLabel").topLeft(), ExpectedView::plotSize);
    QCOMPARE(run.image("a.png").copy(plot).convertToFormat(QImage::Format_RGB32),
             run.image("plot.png").convertToFormat(QImage::Format_RGB32));
}

QTEST_GUILESS_MAIN(TestDriver)
#include "tst_driver.moc"
