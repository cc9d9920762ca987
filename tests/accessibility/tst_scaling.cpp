#include "inside.h"

#include "places.h"
#include "pointer.h"
#include "window_parts.h"

#include <QLabel>
#include <QRubberBand>
#include <QScreen>
#include <QTest>
#include <algorithm>

// Plot and box on a screen with the scale factor of QT_SCALE_FACTOR.
class ScalingTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void plotFollowsTheScreen();
    void bandFollowsTheMouse();
    void boxTakesThePointsInIt();
};

const char* const fileName = PELMARK_EXAMPLES "/chromosome1.txt";

void beforeTheWindow() {}

QObject* newTest() {
    return new ScalingTest;
}

void ScalingTest::initTestCase() {
    QCOMPARE(parts::window()->devicePixelRatio(),
             qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
}

void ScalingTest::plotFollowsTheScreen() {
    const QSize screen = parts::window()->screen()->geometry().size();
    const QPixmap plot = parts::imageLabel()->pixmap();
    QCOMPARE(plot.size(), QSize(static_cast<int>(0.8 * screen.width()),
                                static_cast<int>(0.75 * screen.height())));
    QCOMPARE(parts::imageLabel()->height(), plot.height());
    QVERIFY(parts::imageLabel()->width() >= plot.width());
    QCOMPARE(plot.devicePixelRatio(), 1.0);
}

void ScalingTest::bandFollowsTheMouse() {
    pointer::drag(parts::imageLabel(), {30, 20}, {90, 60});
    QVERIFY(parts::rubberBand()->isVisible());
    QCOMPARE(parts::rubberBand()->geometry(), QRect(QPoint(30, 20), QPoint(90, 60)));
    pointer::release(parts::imageLabel(), {30, 20});
}

// Draws a box around the place where a single point was drawn.
void ScalingTest::boxTakesThePointsInIt() {
    parts::window()->showRemaining();
    const qsizetype top =
        std::max_element(Value_list.cbegin(), Value_list.cend()) - Value_list.cbegin();
    const int position = Pos_list[top];
    const QPoint place = places::of(position, Value_list[top]);
    const QImage plot = parts::imageLabel()->pixmap().toImage();
    QCOMPARE(plot.pixelColor(place), QColor(50, 50, 255));
    pointer::drawBox(parts::imageLabel(), place - QPoint(3, 3), place + QPoint(3, 3));
    QVERIFY(Pos_list.contains(position));
    QVERIFY(Pos_list.size() < 5);
}

#include "tst_scaling.moc"
