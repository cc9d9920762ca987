#include "expected_plot.h"
#include "samples.h"
#include "sight.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <utility>

// One whole session of the program itself on a real window system, with a pointer that moves and
// keys that are pressed: from the file dialog to the saved table, and the table read back in. Each
// step goes on from the one before.
class TestRealScreen : public QObject {
    Q_OBJECT

public:
    static constexpr QSize screenSize{1000, 900};
    static constexpr QSize plotSize{800, 675};

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void opensFromDialog();
    void picksChromosome();
    void zooms();
    void removes();
    void unzooms();
    void saves();
    void readsTableBackIn();
    void exits();
    void cleanupTestCase();

private:
    bool enter(const QString& title);
    void answer(const QString& text) const;
    void click(const QColor& color, qsizetype which) const;
    void dragBox(QPoint from, QPoint to) const;
    QImage plotOnScreen() const;
    QList<QRect> buttonsOnScreen(const QColor& color) const;
    QByteArray content(const QString& name) const;

    QTemporaryDir m_folder;
    QTemporaryDir m_home;
    QProcess m_program;
    QPoint m_corner{-1, -1};
    bool m_hasFailed = false;
};

// Until then everything must have come about, on the slowest machine.
static constexpr int patience = 60'000;

static const char* const logHeader = "Pelmark 0.1 by the Pelmark authors\n\n";
static const QColor lightBlue(173, 216, 230), green(0, 128, 0), orange(255, 165, 0),
    darkRed(139, 0, 0);

// Runs xdotool and returns what it prints.
static QByteArray xdotool(const QStringList& arguments) {
    QProcess process;
    process.start("xdotool", arguments);
    if (!process.waitForFinished(patience))
        qWarning("xdotool: %s", qPrintable(process.errorString()));
    return process.readAllStandardOutput().trimmed();
}

// The ruler's chromosome R, and a second one beside it.
static QList<samples::Marker> markers() {
    return samples::ruler() +
           QList<samples::Marker>{{"S", 1000, "0.1"}, {"S", 1300, "0.01"}, {"S", 1600, "0.001"}};
}

static QImage chromosomePlot(const QList<int>& positions) {
    QList<samples::Marker> shown;
    for (const samples::Marker& marker : samples::ruler())
        if (positions.contains(marker.position))
            shown.append(marker);
    const ExpectedView view(samples::positions(shown), samples::values(shown),
                            TestRealScreen::screenSize);
    return expectedChromosomePlot(view);
}

// Without a window manager, windows get the keyboard only on request.
bool TestRealScreen::enter(const QString& title) {
    QByteArray window;
    const auto isThere = [&] {
        window = xdotool({"search", "--onlyvisible", "--name", title}).split('\n').value(0);
        return !window.isEmpty();
    };
    if (!QTest::qWaitFor(isThere, patience))
        return false;
    xdotool({"windowfocus", "--sync", window});
    return true;
}

void TestRealScreen::answer(const QString& text) const {
    xdotool({"type", text});
    xdotool({"key", "Return"});
}

void TestRealScreen::click(const QColor& color, qsizetype which) const {
    QList<QRect> buttons;
    const auto isAtRest = [&] {
        const QList<QRect> before = std::exchange(buttons, buttonsOnScreen(color));
        return buttons.size() > which && buttons == before;
    };
    QVERIFY(QTest::qWaitFor(isAtRest, patience));
    const QPoint place = buttons[which].center();
    xdotool({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "1"});
}

void TestRealScreen::dragBox(QPoint from, QPoint to) const {
    const auto place = [this](QPoint point) {
        point += m_corner;
        return QStringList{"mousemove", QString::number(point.x()), QString::number(point.y())};
    };
    xdotool(place(from) + QStringList{"mousedown", "1"} + place((from + to) / 2) + place(to) +
            QStringList{"mouseup", "1"});
    xdotool({"mousemove", "999", "899"}); // where it brings up no tool tip
}

QImage TestRealScreen::plotOnScreen() const {
    return sight::screen().copy(QRect(m_corner, plotSize));
}

QList<QRect> TestRealScreen::buttonsOnScreen(const QColor& color) const {
    return sight::buttons(sight::screen(), m_corner.y() + plotSize.height(), color);
}

QByteArray TestRealScreen::content(const QString& name) const {
    QFile file(m_folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestRealScreen::initTestCase() {
    QVERIFY2(!xdotool({"version"}).isEmpty(), "there is no xdotool");
    QFile data(m_folder.filePath("data.txt"));
    QVERIFY(data.open(QIODevice::WriteOnly));
    data.write(samples::table(markers()));
    data.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", m_home.path());
    environment.insert("XDG_RUNTIME_DIR", m_home.path());
    m_program.setProcessEnvironment(environment);
    m_program.setWorkingDirectory(m_folder.path());
    m_program.setProcessChannelMode(QProcess::ForwardedChannels);
    m_program.start(QStringLiteral(PELMARK), QStringList());
    QVERIFY(m_program.waitForStarted());
}

void TestRealScreen::init() {
    if (m_hasFailed)
        QFAIL("the step before this one failed");
}

void TestRealScreen::cleanup() {
    if (QTest::currentTestFailed() && !m_hasFailed)
        sight::screen().save("tst_real_screen_failed.png");
    m_hasFailed = m_hasFailed || QTest::currentTestFailed();
}

void TestRealScreen::opensFromDialog() {
    QVERIFY(enter("^Welcome to  PELMARK !  Select File$"));
    answer("data.txt");
    QVERIFY(enter("^PELMARK 0.1 by the Pelmark authors$"));
    QTRY_VERIFY_WITH_TIMEOUT(sight::plotCorner(sight::screen(), 800) != QPoint(-1, -1), patience);
    m_corner = sight::plotCorner(sight::screen(), 800);
    const QByteArray window = xdotool({"search", "--onlyvisible", "--name", "^PELMARK"});
    QCOMPARE(xdotool({"getwindowgeometry", window}).split('\n').value(1).trimmed().left(13),
             "Position: 5,5");
    const ExpectedView view({1, 2, 3, 4, 5, 6, 6, 7, 10, 13}, samples::values(markers()),
                            screenSize);
    const QImage expected = expectedGenomePlot(view, genomePlot("data.txt", {"R", "S"}, {1, 10}));
    QTRY_COMPARE_WITH_TIMEOUT(plotOnScreen(), expected, patience);
    QCOMPARE(buttonsOnScreen(green).size(), 0);
    QCOMPARE(buttonsOnScreen(orange).size(), 1);
    QCOMPARE(content("Pelmark_log.txt"), QByteArray(logHeader) + "Get GLOBAL\n");
}

void TestRealScreen::picksChromosome() {
    dragBox({100, 100}, {220, 400});
    QTRY_COMPARE_WITH_TIMEOUT(plotOnScreen(),
                              chromosomePlot({1000, 1100, 1200, 1300, 1400, 1500, 1582}), patience);
    QTRY_COMPARE_WITH_TIMEOUT(buttonsOnScreen(green).size(), 2, patience);
    QCOMPARE(content("Pelmark_log.txt"),
             QByteArray(logHeader) +
                 "Get GLOBAL\nselect chrom R 0 point 160 position 3 start 1 end "
                 "7 pixPerX 66.6667 minX 1\n\n"
                 "selected chromosome by getManhattan R\n");
}

void TestRealScreen::zooms() {
    dragBox({420, 500}, {150, 180}); // backwards
    QTRY_COMPARE_WITH_TIMEOUT(plotOnScreen(), chromosomePlot({1100, 1200, 1300}), patience);
}

void TestRealScreen::removes() {
    click(green, 1);
    QTRY_COMPARE_WITH_TIMEOUT(plotOnScreen(), chromosomePlot({1000, 1400, 1500, 1582}), patience);
}

void TestRealScreen::unzooms() {
    dragBox({500, 0}, {700, 674});
    QTRY_COMPARE_WITH_TIMEOUT(plotOnScreen(), chromosomePlot({1400, 1500}), patience);
    click(green, 0);
    QTRY_COMPARE_WITH_TIMEOUT(plotOnScreen(), chromosomePlot({1000, 1400, 1500, 1582}), patience);
}

void TestRealScreen::saves() {
    click(orange, 0);
    QVERIFY(enter("^Enter new filename$"));
    xdotool({"key", "ctrl+a"});
    answer("kept");
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_folder.filePath("kept.png")), patience);
    QCOMPARE(content("kept.txt"), "Chr\tPosition\tP\t-log10(P)\nR\t1000\t1\t0\nR\t1400\t1e-14\t14\n"
                                  "R\t1500\t1e-50\t50\nR\t1582\t0.001\t3\n");
    QTRY_COMPARE_WITH_TIMEOUT(
        QImage(m_folder.filePath("kept.png")).convertToFormat(QImage::Format_RGB32),
        chromosomePlot({1000, 1400, 1500, 1582}), patience);
}

void TestRealScreen::readsTableBackIn() {
    QVERIFY(enter("^PELMARK 0.1"));
    click(lightBlue, 0);
    QVERIFY(enter("^Welcome to  PELMARK !  Select File$"));
    QTRY_COMPARE_WITH_TIMEOUT(content("Pelmark_log.txt"), QByteArray(logHeader), patience);
    answer("kept.txt");
    QTRY_COMPARE_WITH_TIMEOUT(content("Pelmark_log.txt"),
                              QByteArray(logHeader) + "selected chromosome by getManhattan R\n",
                              patience);
    QTRY_COMPARE_WITH_TIMEOUT(plotOnScreen(), chromosomePlot({1000, 1400, 1500, 1582}), patience);
}

void TestRealScreen::exits() {
    click(darkRed, 0);
    QTRY_COMPARE_WITH_TIMEOUT(m_program.state(), QProcess::NotRunning, patience);
    QCOMPARE(m_program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_program.exitCode(), 0);
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList({"data.txt", "kept.png", "kept.txt", "Pelmark_log.txt"}));
}

void TestRealScreen::cleanupTestCase() {
    if (m_program.state() == QProcess::NotRunning)
        return;
    m_program.kill();
    m_program.waitForFinished(patience);
}

QTEST_MAIN(TestRealScreen)
#include "tst_real_screen.moc"
