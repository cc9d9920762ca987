#include "plain_geometry.h"
#include "plot_geometry.h"

#include <QTest>
#include <cmath>
#include <limits>

class PlotGeometryTest : public QObject {
    Q_OBJECT

private slots:
    void example();
    void positions_data();
    void positions();
    void values_data();
    void values();
    void zeros();
    void imageSize_data();
    void imageSize();
    void noPoints();
    void onePoint();
    void pixels_data();
    void pixels();
    void thereAndBack_data();
    void thereAndBack();
};

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr QSize screen(1000, 800);

} // namespace

void PlotGeometryTest::example() {
    const PlotGeometry geometry = plotGeometry({{100, 300}, {2.0, 4.0}}, screen);
    QCOMPARE(geometry.realMinX, 100);
    QCOMPARE(geometry.realMaxX, 300);
    QVERIFY(geometry.realMaxY == 4.0);
    QCOMPARE(geometry.minX, 90);
    QCOMPARE(geometry.maxX, 310);
    QVERIFY(geometry.minY == 2.0 - 0.05 * 2.0);
    QVERIFY(geometry.maxY == 4.0 + 0.05 * 2.0);
    QCOMPARE(geometry.width, 800);
    QCOMPARE(geometry.height, 600);
    QCOMPARE(geometry.xMargin, 0);
    QCOMPARE(geometry.xMargin2, 0);
    QCOMPARE(geometry.yMargin, 0);
    QVERIFY(geometry.pixPerX == 800.0 / 220.0);
    QVERIFY(geometry.pixPerY == 600.0 / (geometry.maxY - geometry.minY));
    QCOMPARE(geometry.xOf(100), 36);
    QCOMPARE(geometry.xOf(300), 763);
    QCOMPARE(geometry.yOf(2.0), 600 - 27);
    QCOMPARE(geometry.yOf(4.0), 600 - 572);
    QCOMPARE(geometry.yOfLevel(3.0), 300);
}

void PlotGeometryTest::positions_data() {
    QTest::addColumn<QList<int>>("positions");
    QTest::addColumn<int>("minX");
    QTest::addColumn<int>("maxX");
    QTest::addColumn<int>("realMinX");
    QTest::addColumn<int>("realMaxX");
    QTest::addColumn<double>("pixPerX");
    const auto row = [](const char* name, const QList<int>& positions, int minX, int maxX,
                        double pixPerX) {
        QTest::newRow(name) << positions << minX << maxX << positions.constFirst()
                            << positions.constLast() << pixPerX;
    };
    row("a span of 19 has no margin", {100, 119}, 100, 119, 800.0 / 19);
    row("a span of 20 has one", {100, 120}, 99, 121, 800.0 / 22);
    row("a span of 39 has one", {100, 139}, 99, 140, 800.0 / 41);
    row("first and last count, not smallest and largest", {500, 100, 900, 300}, 510, 290,
        800.0 / -220);
    row("a negative span of 19", {119, 100}, 119, 100, 800.0 / -19);
    row("equal positions", {7, 7}, 7, 7, infinity);
    row("equal at both ends", {7, 100, 7}, 7, 7, infinity);
    row("below zero", {-1000, 1000}, -1100, 1100, 800.0 / 2200);
    row("a margin that reaches below zero", {1000, 1000000}, -48950, 1049950, 800.0 / 1098900);
    row("a chromosome", {662622, 248000000}, -11704246, 260366868, 800.0 / 272071114);
    // Sums beyond int wrap around: the span is -1 here, and 1 in the next row.
    row("the int limits", {lowest, highest}, lowest, highest, -800.0);
    row("the int limits backwards", {highest, lowest}, highest, lowest, 800.0);
    row("the margin wraps around", {0, highest}, -107374182, highest - 4294967296 + 107374182,
        800.0 / (highest - 4294967296 + 2 * 107374182LL));
}

void PlotGeometryTest::positions() {
    QFETCH(QList<int>, positions);
    QFETCH(double, pixPerX);
    const QList<double> values(positions.size(), 1.0);
    for (const auto& geometryOf : {plotGeometry, plain::plotGeometry}) {
        const PlotGeometry geometry = geometryOf({positions, values}, screen);
        QTEST(geometry.minX, "minX");
        QTEST(geometry.maxX, "maxX");
        QTEST(geometry.realMinX, "realMinX");
        QTEST(geometry.realMaxX, "realMaxX");
        QVERIFY(geometry.pixPerX == pixPerX);
    }
}

void PlotGeometryTest::values_data() {
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<double>("minY");
    QTest::addColumn<double>("maxY");
    QTest::addColumn<double>("realMaxY");
    QTest::addColumn<double>("pixPerY");
    const auto row = [](const char* name, const QList<double>& values, double min, double max) {
        const double dy = 0.05 * (max - min);
        QTest::newRow(name) << values << min - dy << max + dy << max
                            << 600.0 / ((max + dy) - (min - dy));
    };
    row("in order", {1.0, 2.0, 3.0}, 1.0, 3.0);
    row("in no order", {2.0, 3.0, 1.0}, 1.0, 3.0);
    row("the largest first", {3.0, 1.0, 2.0}, 1.0, 3.0);
    row("equal", {2.0, 2.0, 2.0}, 2.0, 2.0);
    row("below zero", {-2.0, -1.0, -3.0}, -3.0, -1.0);
    row("one NaN", {notANumber, 1.0, 3.0}, 1.0, 3.0);
    row("only NaN", {notANumber, notANumber, notANumber}, 9999999.9, -9999999.9);
    row("infinite", {1.0, 2.0, infinity}, 1.0, infinity);
    row("more values than points", {1.0, 2.0, 3.0, 99.0, -99.0}, 1.0, 3.0);
    row("larger than the search's first minimum", {1e7, 2e7, 3e7}, 9999999.9, 3e7);
    row("smaller than the search's first maximum", {-1e7, -2e7, -3e7}, -3e7, -9999999.9);
}

void PlotGeometryTest::values() {
    QFETCH(QList<double>, values);
    QFETCH(double, minY);
    QFETCH(double, maxY);
    QFETCH(double, realMaxY);
    QFETCH(double, pixPerY);
    for (const auto& geometryOf : {plotGeometry, plain::plotGeometry}) {
        PlotGeometry geometry = geometryOf({{100, 200, 300}, values}, screen);
        const QString got = plain::toText(geometry);
        geometry.minY = minY;
        geometry.maxY = maxY;
        geometry.realMaxY = realMaxY;
        geometry.pixPerY = pixPerY;
        QCOMPARE(got, plain::toText(geometry));
    }
}

// Of equal values, the first counts.
void PlotGeometryTest::zeros() {
    const PlotGeometry plain = plotGeometry({{1, 2}, {0.0, -0.0}}, screen);
    QVERIFY(!std::signbit(plain.minY) && !std::signbit(plain.realMaxY));
    const PlotGeometry minus = plotGeometry({{1, 2}, {-0.0, 0.0}}, screen);
    QVERIFY(std::signbit(minus.minY) && std::signbit(minus.realMaxY));
}

void PlotGeometryTest::imageSize_data() {
    QTest::addColumn<QSize>("screenSize");
    QTest::addColumn<QSize>("image");
    QTest::newRow("1000 x 800") << QSize(1000, 800) << QSize(800, 600);
    QTest::newRow("1920 x 1080") << QSize(1920, 1080) << QSize(1536, 810);
    QTest::newRow("1366 x 768") << QSize(1366, 768) << QSize(1092, 576);
    QTest::newRow("truncated") << QSize(1001, 801) << QSize(800, 600);
    QTest::newRow("almost one more") << QSize(1004, 803) << QSize(803, 602);
    QTest::newRow("one pixel") << QSize(1, 1) << QSize(0, 0);
    QTest::newRow("none") << QSize(0, 0) << QSize(0, 0);
}

void PlotGeometryTest::imageSize() {
    QFETCH(QSize, screenSize);
    for (const Points& points : {Points{{100, 300}, {2.0, 4.0}}, Points()}) {
        const PlotGeometry geometry = plotGeometry(points, screenSize);
        QTEST(QSize(geometry.width, geometry.height), "image");
    }
}

void PlotGeometryTest::noPoints() {
    const PlotGeometry geometry = plotGeometry(Points(), screen);
    QCOMPARE(geometry.minX, -1);
    for (const double number :
         {geometry.minY, geometry.maxY, geometry.realMaxY, geometry.pixPerX, geometry.pixPerY})
        QVERIFY(std::isfinite(number));
    QVERIFY(geometry.maxX >= geometry.minX);
    QVERIFY(geometry.maxY >= geometry.minY);
    QCOMPARE(geometry.realMinX, 0);
    QCOMPARE(geometry.realMaxX, 0);
    QVERIFY(geometry.realMaxY == 0.0);
}

// The everyday case of a zoom to one point: it is in the middle, and a box there selects it.
void PlotGeometryTest::onePoint() {
    const PlotGeometry geometry = plotGeometry({{500}, {4.0}}, screen);
    QCOMPARE(geometry.minX, 500);
    QCOMPARE(geometry.maxX, 500);
    QVERIFY(std::isinf(geometry.pixPerX) && std::isinf(geometry.pixPerY));
    QCOMPARE(geometry.xOf(500), 400);
    QCOMPARE(geometry.yOf(4.0), 300);
    for (const int pixel : {0, 1, 300, 600, 800}) {
        QCOMPARE(geometry.positionAt(pixel), 500);
        QVERIFY(geometry.valueAt(pixel) == 4.0);
    }
    // Reference lines are not moved to the middle.
    for (const double level : {7.3, 6.0, 5.0, 4.0, 3.0}) {
        const int y = geometry.yOfLevel(level);
        QVERIFY2(y < 0 || y > 600, qPrintable(QString::number(y)));
    }
}

void PlotGeometryTest::pixels_data() {
    QTest::addColumn<double>("pixPerX");
    QTest::addColumn<int>("minX");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("x");
    QTest::newRow("left edge") << 0.5 << 100 << 100 << 0;
    QTest::newRow("truncated") << 0.5 << 100 << 103 << 1;
    QTest::newRow("left of the image") << 0.5 << 100 << 97 << -1;
    QTest::newRow("just left of the image") << 0.5 << 100 << 99 << 0;
    QTest::newRow("a negative scale") << -0.5 << 100 << 103 << -1;
    QTest::newRow("far right") << 1e6 << 0 << 2147 << 2147000000;
    QTest::newRow("beyond int") << 1e6 << 0 << 2148 << lowest;
    QTest::newRow("a difference that wraps around") << 1.0 << -2 << highest << lowest + 1;
    QTest::newRow("not a number") << notANumber << 0 << 5 << lowest;
    QTest::newRow("no scale") << 0.0 << 0 << 5 << 0;
    QTest::newRow("infinite") << infinity << 5 << 5 << 400;
    QTest::newRow("infinite backwards") << -infinity << 5 << 8 << 400;
}

void PlotGeometryTest::pixels() {
    QFETCH(double, pixPerX);
    QFETCH(int, minX);
    QFETCH(int, position);
    PlotGeometry geometry;
    geometry.width = 800;
    geometry.height = 600;
    geometry.minX = minX;
    geometry.pixPerX = pixPerX;
    QTEST(geometry.xOf(position), "x");
    // The same numbers on the other axis, which counts upward from the bottom edge.
    geometry.minY = minX;
    geometry.pixPerY = pixPerX;
    QFETCH(int, x);
    if (std::isinf(pixPerX))
        QCOMPARE(geometry.yOf(position), 300);
    else if (x != lowest && minX >= 0)
        QCOMPARE(geometry.yOf(position), 600 - x);
    else if (x == lowest)
        QCOMPARE(geometry.yOf(position), lowest + 600);
}

void PlotGeometryTest::thereAndBack_data() {
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<double>("lowestValue");
    QTest::addColumn<double>("highestValue");
    QTest::newRow("a gene") << 1000000 << 1000100 << 0.0 << 1.0;
    QTest::newRow("a region") << 662622 << 931362 << 0.1 << 3.7;
    QTest::newRow("a chromosome") << 10583 << 249240543 << 0.0 << 8.5;
    QTest::newRow("a genome") << 1 << 28000000 << 0.0 << 38.3;
    QTest::newRow("a strong signal") << 1 << 28000000 << 0.0 << 320.0;
    QTest::newRow("narrow values") << 1 << 1000 << 7.29999 << 7.30001;
    QTest::newRow("backwards") << 900000 << 100000 << 0.0 << 5.0;
    QTest::newRow("below zero") << -5000 << -100 << -3.0 << -1.0;
}

// A pixel's position and value lie on the same pixel, or on the next one if rounding decides; at
// both edges and between.
void PlotGeometryTest::thereAndBack() {
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(double, lowestValue);
    QFETCH(double, highestValue);
    const PlotGeometry geometry =
        plotGeometry({{first, last}, {lowestValue, highestValue}}, QSize(1920, 1080));
    const double positionsPerPixel = 1.0 / std::abs(geometry.pixPerX);
    for (const int x : {0, 1, geometry.width / 2, geometry.width - 1, geometry.width}) {
        const int back = geometry.xOf(geometry.positionAt(x));
        const int slack = 1 + static_cast<int>(1.0 / positionsPerPixel);
        QVERIFY2(std::abs(back - x) <= slack, qPrintable(QString::number(back)));
    }
    for (const int y : {0, 1, geometry.height / 2, geometry.height - 1, geometry.height})
        QVERIFY(std::abs(geometry.yOf(geometry.valueAt(y)) - y) <= 1);
    QCOMPARE(geometry.positionAt(0), geometry.minX);
    QVERIFY(std::abs(geometry.positionAt(geometry.width) - geometry.maxX) <= 1);
    QVERIFY(geometry.valueAt(geometry.height) == geometry.minY);
    QVERIFY(std::abs(geometry.valueAt(0) - geometry.maxY) < 1e-9);
}

QTEST_GUILESS_MAIN(PlotGeometryTest)
#include "tst_plot_geometry.moc"
