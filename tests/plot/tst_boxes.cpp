#include "box.h"

#include <QTest>
#include <limits>

class Boxes : public QObject {
    Q_OBJECT

private slots:
    void within_data();
    void within();
    void area_data();
    void area();
    void dataOfABox_data();
    void dataOfABox();
    void boundsAreInside();
    void orderIsKept();
    void valuesThatAreNoNumbers();
    void allAndNothing();
    void chromosome_data();
    void chromosome();
    void noChromosomes();
};

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Qt may compare empty lists by memcmp with a null pointer, which sanitizers reject.
bool isEmpty(const Points& points) {
    return points.positions.isEmpty() && points.values.isEmpty();
}

} // namespace

void Boxes::within_data() {
    QTest::addColumn<QPoint>("start");
    QTest::addColumn<QPoint>("end");
    QTest::addColumn<QPoint>("topLeft");
    QTest::addColumn<QPoint>("bottomRight");
    const auto row = [](const char* name, QPoint start, QPoint end, QPoint topLeft,
                        QPoint bottomRight) {
        QTest::newRow(name) << start << end << topLeft << bottomRight;
    };
    row("down and right", {10, 20}, {30, 40}, {10, 20}, {30, 40});
    row("up and left", {30, 40}, {10, 20}, {10, 20}, {30, 40});
    row("up and right", {10, 40}, {30, 20}, {10, 20}, {30, 40});
    row("down and left", {30, 20}, {10, 40}, {10, 20}, {30, 40});
    row("left of and above the image", {30, 40}, {-5, -7}, {0, 0}, {30, 40});
    row("begun left of and above it", {-1, -1}, {30, 40}, {0, 0}, {30, 40});
    row("right of and below it", {30, 40}, {805, 607}, {30, 40}, {800, 600});
    row("begun right of and below it", {801, 601}, {30, 40}, {30, 40}, {800, 600});
    row("the last pixels", {30, 40}, {799, 599}, {30, 40}, {799, 599});
    row("one past the last pixels", {30, 40}, {800, 600}, {30, 40}, {800, 600});
    row("each edge has its own limit", {700, 500}, {700, 700}, {700, 500}, {700, 600});
    row("all around it", {-100, 5000}, {5000, -100}, {0, 0}, {800, 600});
    row("beside it", {-100, 10}, {-50, 20}, {0, 10}, {0, 20});
    row("a click", {10, 20}, {10, 20}, {10, 20}, {10, 20});
}

void Boxes::within() {
    QFETCH(QPoint, start);
    QFETCH(QPoint, end);
    const PixelBox box = PixelBox{start, end}.within(QSize(800, 600));
    QTEST(box.start, "topLeft");
    QTEST(box.end, "bottomRight");
}

void Boxes::area_data() {
    QTest::addColumn<QPoint>("end");
    QTest::addColumn<bool>("hasArea");
    QTest::newRow("a click") << QPoint(10, 20) << false;
    QTest::newRow("a horizontal stroke") << QPoint(90, 20) << false;
    QTest::newRow("a vertical stroke") << QPoint(10, 90) << false;
    QTest::newRow("one pixel each way") << QPoint(11, 21) << true;
    QTest::newRow("one pixel back each way") << QPoint(9, 19) << true;
    QTest::newRow("a box") << QPoint(90, 90) << true;
}

void Boxes::area() {
    QFETCH(QPoint, end);
    QTEST((PixelBox{{10, 20}, end}.hasArea()), "hasArea");
}

void Boxes::dataOfABox_data() {
    QTest::addColumn<double>("pixPerX");
    QTest::addColumn<double>("pixPerY");
    QTest::addColumn<int>("minX");
    QTest::addColumn<int>("maxX");
    QTest::addColumn<double>("minY");
    QTest::addColumn<double>("maxY");
    // Of the box from (10, 20) to (33, 60) on 800 x 600 pixels, from position 1000 and value 2.
    QTest::newRow("a pixel a unit") << 1.0 << 1.0 << 1010 << 1033 << 542.0 << 582.0;
    QTest::newRow("positions are truncated")
        << 3.0 << 100.0 << 1003 << 1011 << 2.0 + 5.4 << 2.0 + 5.8;
    QTest::newRow("many units a pixel")
        << 0.01 << 1000.0 << 2000 << 4300 << 2.0 + 0.54 << 2.0 + 0.58;
    QTest::newRow("backwards") << -1.0 << 1.0 << 1000 - 33 << 990 << 542.0 << 582.0;
    QTest::newRow("one position and one value")
        << infinity << infinity << 1000 << 1000 << 2.0 << 2.0;
    // The positions of both corners are beyond int.
    QTest::newRow("no scale") << 0.0 << 1.0 << lowest + 1000 << lowest + 1000 << 542.0 << 582.0;
}

void Boxes::dataOfABox() {
    QFETCH(double, pixPerX);
    QFETCH(double, pixPerY);
    PlotGeometry geometry;
    geometry.width = 800;
    geometry.height = 600;
    geometry.minX = 1000;
    geometry.minY = 2.0;
    geometry.pixPerX = pixPerX;
    geometry.pixPerY = pixPerY;
    const DataBox box = dataBox({{10, 20}, {33, 60}}, geometry);
    QTEST(box.minX, "minX");
    QTEST(box.maxX, "maxX");
    QFETCH(double, minY);
    QFETCH(double, maxY);
    QVERIFY(box.minY == minY);
    QVERIFY(box.maxY == maxY);
}

void Boxes::boundsAreInside() {
    const DataBox box{100, 200, 2.0, 4.0};
    for (const int position : {100, 101, 200})
        for (const double value : {2.0, 3.0, 4.0})
            QVERIFY(box.contains(position, value));
    for (const int position : {99, 201, -150, lowest, highest})
        QVERIFY(!box.contains(position, 3.0));
    for (const double value : {1.9999999999999998, 4.000000000000001, infinity, -infinity})
        QVERIFY(!box.contains(150, value));
}

void Boxes::orderIsKept() {
    const Points points{{300, 150, 100, 200, 99, 201, 150, 150},
                        {3.0, 3.0, 2.0, 4.0, 3.0, 3.0, 5.0, 3.0}};
    const DataBox box{100, 200, 2.0, 4.0};
    QCOMPARE(pointsInside(points, box), (Points{{150, 100, 200, 150}, {3.0, 2.0, 4.0, 3.0}}));
    QCOMPARE(pointsOutside(points, box), (Points{{300, 99, 201, 150}, {3.0, 3.0, 3.0, 5.0}}));
}

void Boxes::valuesThatAreNoNumbers() {
    const Points points{{150, 150}, {notANumber, 3.0}};
    const DataBox box{lowest, highest, -infinity, infinity};
    QCOMPARE(pointsInside(points, box), (Points{{150}, {3.0}}));
    const Points outside = pointsOutside(points, box);
    QCOMPARE(outside.positions, QList<int>({150}));
    QVERIFY(qIsNaN(outside.values.constFirst()));
    const DataBox nowhere{lowest, highest, notANumber, notANumber};
    QVERIFY(isEmpty(pointsInside({{150}, {3.0}}, nowhere)));
    QCOMPARE(pointsOutside({{150}, {3.0}}, nowhere), (Points{{150}, {3.0}}));
}

void Boxes::allAndNothing() {
    const Points points{{1, 2, 3}, {1.0, 2.0, 3.0}};
    QCOMPARE(pointsInside(points, {1, 3, 1.0, 3.0}), points);
    QVERIFY(isEmpty(pointsOutside(points, {1, 3, 1.0, 3.0})));
    QVERIFY(isEmpty(pointsInside(points, {4, 9, 1.0, 3.0})));
    QCOMPARE(pointsOutside(points, {4, 9, 1.0, 3.0}), points);
    QVERIFY(isEmpty(pointsInside(Points(), {1, 3, 1.0, 3.0})));
    QVERIFY(isEmpty(pointsOutside(Points(), {1, 3, 1.0, 3.0})));
}

void Boxes::chromosome_data() {
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("index");
    QTest::newRow("a first position") << 10 << 0;
    QTest::newRow("within the first") << 15 << 0;
    QTest::newRow("a last position") << 20 << 0;
    QTest::newRow("a gap") << 21 << 0;
    QTest::newRow("before the second") << 29 << 0;
    QTest::newRow("the second's first") << 30 << 1;
    QTest::newRow("the second's last, the third's first") << 40 << 1;
    QTest::newRow("the third's second") << 41 << 2;
    QTest::newRow("the third's last") << 50 << 2;
    QTest::newRow("right of all") << 51 << 0;
    QTest::newRow("left of all") << 9 << 0;
    QTest::newRow("one position wide") << 60 << 3;
    QTest::newRow("a range that holds nothing") << 75 << 0;
    QTest::newRow("lowest") << lowest << 0;
    QTest::newRow("highest") << highest << 0;
}

void Boxes::chromosome() {
    QFETCH(int, position);
    QList<Chromosome> chromosomes;
    for (const auto& [start, end] : {std::pair(10, 20), {30, 40}, {40, 50}, {60, 60}, {80, 70}})
        chromosomes.append({.startValue = start, .endValue = end});
    const std::optional<int> found = chromosomeAt(position, chromosomes);
    QVERIFY(found.has_value());
    QTEST(*found, "index");
}

void Boxes::noChromosomes() {
    QVERIFY(!chromosomeAt(5, {}).has_value());
}

QTEST_GUILESS_MAIN(Boxes)
#include "tst_boxes.moc"
