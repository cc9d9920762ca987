#include "driven_run.h"
#include "samples.h"

#include <QJsonArray>
#include <QTest>

// Screens from small to very large, at every usual scale: the plot has its size, no text is cut,
// and a box takes the point that it is drawn around.
class Screens : public QObject {
    Q_OBJECT

private slots:
    void screen_data();
    void screen();
};

namespace {

QSize sizeOf(const QJsonArray& rectangle) {
    return {rectangle[2].toInt(), rectangle[3].toInt()};
}

void checkTextsAreWhole(const State& state) {
    for (const char* name :
         {"nameLabel", "hintLabel", "newFileButton", "globalButton", "unzoomButton", "removeButton",
          "saveButton", "saveRemoveButton", "exitButton", "checkBox1", "checkBox2"}) {
        const QSize size = sizeOf(state.widget(name)["geometry"].toArray());
        const QSize needed = sizeOf(state.widget(name)["needed"].toArray());
        if (state.isVisible(name))
            QVERIFY2(size.width() >= needed.width() && size.height() >= needed.height(), name);
    }
}

// The picture fills its label from the top left corner: both have the same pixels.
void checkPlot(const State& state, QSize plot) {
    QCOMPARE(QSize(state.integer("fwidth"), state.integer("fheight")), plot);
    QVERIFY2(state.picture("shown").startsWith(
                 QStringLiteral("%1x%2").arg(plot.width()).arg(plot.height())),
             qPrintable(state.picture("shown")));
    const QRect label = state.geometry("imageLabel");
    QVERIFY(label.width() >= plot.width());
    QCOMPARE(label.height(), plot.height());
}

QString boxAround(QPoint pixel) {
    return QStringLiteral("box %1 %2 %3 %4")
        .arg(pixel.x() - 2)
        .arg(pixel.y() - 2)
        .arg(pixel.x() + 2)
        .arg(pixel.y() + 2);
}

} // namespace

void Screens::screen_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("scale");
    for (const QSize size : {QSize(640, 480), QSize(800, 600), QSize(1024, 768), QSize(1366, 768),
                             QSize(1920, 1080), QSize(1080, 1920), QSize(2560, 1440),
                             QSize(3840, 2160), QSize(5120, 1440), QSize(7680, 4320)})
        for (const double scale : {1.0, 1.5, 2.0})
            QTest::addRow("%d x %d, scale %g", size.width(), size.height(), scale) << size << scale;
}

void Screens::screen() {
    QFETCH(QSize, size);
    QFETCH(double, scale);
    DrivenRun run;
    run.setScreen(size);
    run.addFile("data.txt", samples::chromosomeTable());
    run.addFile("genome.txt", samples::genomeTable());
    run.setEnvironment("QT_SCALE_FACTOR", QString::number(scale));
    QVERIFY(run.playTo(0, {"open genome.txt", "dump genome", "click newFileButton", "open data.txt",
                           "dump chromosome", "click exitButton"}));
    const State genome = run.state("genome"), chromosome = run.state("chromosome");
    const QJsonArray screenRect = chromosome.window()["screenRect"].toArray();
    const QSize screen = sizeOf(screenRect);
    QVERIFY(qAbs(screen.width() - size.width() / scale) <= 1.0);
    QVERIFY(qAbs(screen.height() - size.height() / scale) <= 1.0);
    const QSize plot(int(0.8 * screen.width()), int(0.75 * screen.height()));
    for (const State& state : {genome, chromosome}) {
        checkPlot(state, plot);
        checkTextsAreWhole(state);
    }

    const ExpectedView view(samples::positions(samples::chromosome()),
                            samples::values(samples::chromosome()), screen);
    const int marker = 3;
    const QPoint pixel(view.x(view.positions[marker]), view.y(view.values[marker]));
    QVERIFY(run.playTo(0, {"open data.txt", boxAround(pixel), "dump zoomed", "click exitButton"}));
    const QList<int> found = run.state("zoomed").integers("Pos_list");
    QVERIFY2(found.contains(view.positions[marker]), qPrintable(QString::number(found.size())));
}

QTEST_GUILESS_MAIN(Screens)
#include "tst_screens.moc"
