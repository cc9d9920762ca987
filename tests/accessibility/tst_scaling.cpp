#include "inside.h"

#include "hfile.h"

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

private:
    QPoint inWindow(QPoint place) const { return m_image->mapTo(inside::window(), place); }
    void drag(QPoint from, QPoint to, bool letGo);

    QLabel* m_image = nullptr;
};

const char* const fileName = PELMARK_EXAMPLES "/chromosome1.txt";

void beforeTheWindow() {}

QObject* newTest() {
    return new ScalingTest;
}

void ScalingTest::drag(QPoint from, QPoint to, bool letGo) {
    QTest::mousePress(inside::window(), Qt::LeftButton, {}, inWindow(from));
    QTest::mouseMove(inside::window(), inWindow((from + to) / 2));
    QTest::mouseMove(inside::window(), inWindow(to));
    if (letGo)
        QTest::mouseRelease(inside::window(), Qt::LeftButton, {}, inWindow(to));
}

void ScalingTest::initTestCase() {
    m_image = qobject_cast<QLabel*>(inside::widget(QStringLiteral("imageLabel")));
    QVERIFY(m_image);
    QCOMPARE(inside::window()->devicePixelRatio(),
             qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
}

void ScalingTest::plotFollowsTheScreen() {
    const QSize screen = inside::window()->screen()->geometry().size();
    QCOMPARE(m_image->pixmap().size(), QSize(static_cast<int>(0.8 * screen.width()),
                                             static_cast<int>(0.75 * screen.height())));
    QCOMPARE(m_image->height(), m_image->pixmap().height());
    QVERIFY(m_image->width() >= m_image->pixmap().width());
    QCOMPARE(m_image->pixmap().devicePixelRatio(), 1.0);
}

void ScalingTest::bandFollowsTheMouse() {
    drag({30, 20}, {90, 60}, false);
    const auto* band = m_image->findChild<QRubberBand*>();
    QVERIFY(band->isVisible());
    QCOMPARE(band->geometry(), QRect(QPoint(30, 20), QPoint(90, 60)));
    QTest::mouseRelease(inside::window(), Qt::LeftButton, {}, inWindow({30, 20}));
}

// Draws a box around the place where a single point was drawn.
void ScalingTest::boxTakesThePointsInIt() {
    inside::window()->showRemaining();
    const qsizetype top =
        std::max_element(Value_list.cbegin(), Value_list.cend()) - Value_list.cbegin();
    const int position = Pos_list[top];
    const QPoint place(static_cast<int>(pixPerX * (position - minX)),
                       fheight - static_cast<int>(pixPerY * (Value_list[top] - minY)));
    const QImage plot = m_image->pixmap().toImage();
    QCOMPARE(plot.pixelColor(place), QColor(50, 50, 255));
    drag(place - QPoint(3, 3), place + QPoint(3, 3), true);
    QVERIFY(Pos_list.contains(position));
    QVERIFY(Pos_list.size() < 5);
}

#include "tst_scaling.moc"
