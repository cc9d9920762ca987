#include "exact_pixels.h"

#include <QTest>
#include <cmath>
#include <limits>

// Where exactly the plots put the points, and in which colour.
class PlotPainter : public QObject {
    Q_OBJECT

private slots:
    void dotSize();
    void genomeColors();
    void genomeColorLeftOfAll();
    void laterDotsLieOnTop();
    void dotsLieOnEarlierLabels();
    void highlightColors();
    void segments();
    void oneAndNoSegment();
    void valuesThatAreNoNumbers();
    void infiniteScales();
    void noSize();
};

void PlotPainter::dotSize() {
    const Points points{{50}, {40.0}};
    for (const Painter& painter : painters) {
        const QImage genome = painter.genome(unitGeometry(), pointsOf(points), genomeOf({0}));
        QCOMPARE(genome.size(), QSize(200, 100));
        QCOMPARE(differing(pixels(genome, red), rectangle(49, 59, 50, 60)), QRegion());
        QCOMPARE(
            differing(pixels(genome, white), QRegion(0, 20, 200, 60) - rectangle(49, 59, 50, 60)),
            QRegion());
        const QImage chromosome = painter.chromosome(unitGeometry(), pointsOf(points), {});
        QCOMPARE(differing(pixels(chromosome, blue), rectangle(48, 58, 51, 61)), QRegion());
        QCOMPARE(differing(pixels(chromosome, white),
                           QRegion(0, 20, 200, 60) - rectangle(48, 58, 51, 61)),
                 QRegion());
    }
}

void PlotPainter::genomeColors() {
    const Points points{{10, 49, 50, 60, 119, 120, 130}, QList<double>(7, 50.0)};
    for (const Painter& painter : painters) {
        const QImage image =
            painter.genome(unitGeometry(), pointsOf(points), genomeOf({1, 50, 120}));
        QCOMPARE(image.pixel(10, 50), red);
        QCOMPARE(image.pixel(48, 50), red);
        QCOMPARE(image.pixel(50, 50), grey); // a chromosome begins with its start
        QCOMPARE(image.pixel(60, 50), grey);
        QCOMPARE(image.pixel(118, 50), grey);
        QCOMPARE(image.pixel(120, 50), red);
        QCOMPARE(image.pixel(130, 50), red);
    }
}

// A point that belongs to the first chromosome has the colour of the point before it.
void PlotPainter::genomeColorLeftOfAll() {
    const Points points{{10, 60, 20, 130, 30}, QList<double>(5, 50.0)};
    for (const Painter& painter : painters) {
        const QImage image =
            painter.genome(unitGeometry(), pointsOf(points), genomeOf({1, 50, 120}));
        QCOMPARE(image.pixel(10, 50), red);
        QCOMPARE(image.pixel(20, 50), grey);
        QCOMPARE(image.pixel(30, 50), red);
    }
    // Starts in no order: the last that lies at or below the position counts.
    for (const Painter& painter : painters) {
        const QImage image = painter.genome(unitGeometry(), pointsOf({{60, 130}, {50.0, 50.0}}),
                                            genomeOf({1, 120, 50, 200}));
        QCOMPARE(image.pixel(60, 50), red);
        QCOMPARE(image.pixel(130, 50), red);
        const QImage other = painter.genome(unitGeometry(), pointsOf({{60, 130}, {50.0, 50.0}}),
                                            genomeOf({1, 50, 120, 50}));
        QCOMPARE(other.pixel(60, 50), grey);
        QCOMPARE(other.pixel(130, 50), grey);
    }
}

void PlotPainter::laterDotsLieOnTop() {
    const Points points{{50, 51, 49}, {50.0, 50.0, 50.0}};
    for (const Painter& painter : painters) {
        const QImage genome = painter.genome(unitGeometry(), pointsOf(points), genomeOf({0, 51}));
        // The third point is the first chromosome's, and takes the second's colour.
        QCOMPARE(differing(pixels(genome, grey), dot(51, 50, 2) + dot(49, 50, 2)), QRegion());
        QVERIFY(pixels(genome, red).isEmpty());
        ChromosomePlot plot;
        plot.highlight = {51, 51};
        const QImage chromosome = painter.chromosome(unitGeometry(), pointsOf(points), plot);
        QCOMPARE(differing(pixels(chromosome, blue), dot(49, 50, 4)), QRegion());
        QCOMPARE(differing(pixels(chromosome, red), dot(51, 50, 4) - dot(49, 50, 4)), QRegion());
    }
}

// A label in between, in a colour that no dot ever had since its points are no numbers, is painted
// over by a dot that comes again.
void PlotPainter::dotsLieOnEarlierLabels() {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    PlotGeometry geometry = unitGeometry();
    geometry.pixPerX = 0.01;
    GenomePlot plot = genomeOf({0, 5000, 7550});
    plot.tags = QStringList{"", "HHHHHHHHHH", " "};
    Points dots;
    for (int value = 3; value < 20; ++value) {
        dots.positions << 7560;
        dots.values << value;
    }
    Points points = dots;
    points.positions << QList<int>{6500, 7549} << dots.positions;
    points.values << QList<double>{nan, nan} << dots.values;
    for (const Painter& painter : painters) {
        const QImage image = painter.genome(geometry, pointsOf(points), plot);
        QVERIFY(!ink(image, QRect(65, 80, 8, 20)).isEmpty());
        QCOMPARE(differing(pixels(image, red, 80, 97), QRegion(74, 80, 2, 17)), QRegion());
    }
}

void PlotPainter::highlightColors() {
    const Points points{{0, 20, 30, 40, 50}, QList<double>(5, 50.0)};
    for (const Painter& painter : painters) {
        ChromosomePlot plot;
        plot.highlight = {20, 40};
        const QImage image = painter.chromosome(unitGeometry(), pointsOf(points), plot);
        QCOMPARE(differing(pixels(image, red), dot(20, 50, 4) + dot(30, 50, 4) + dot(40, 50, 4)),
                 QRegion());
        QCOMPARE(differing(pixels(image, blue), (dot(0, 50, 4) & image.rect()) + dot(50, 50, 4)),
                 QRegion());
        const QImage usual = painter.chromosome(unitGeometry(), pointsOf(points), {});
        QCOMPARE(differing(pixels(usual, red), dot(0, 50, 4) & image.rect()), QRegion());
        plot.highlight = {40, 20};
        const QImage backwards = painter.chromosome(unitGeometry(), pointsOf(points), plot);
        QVERIFY(pixels(backwards, red).isEmpty());
    }
}

void PlotPainter::segments() {
    const Points points{{20, 60, 60, 100}, {50.0, 50.0, 30.0, 30.0}};
    ChromosomePlot plot;
    plot.joined = true;
    plot.highlight = {60, 60};
    for (const Painter& painter : painters) {
        const QImage image = painter.chromosome(unitGeometry(), pointsOf(points), plot);
        const QRegion across = rectangle(18, 48, 61, 51), down = rectangle(58, 48, 61, 71),
                      further = rectangle(58, 68, 101, 71);
        QCOMPARE(differing(pixels(image, blue), further), QRegion());
        QCOMPARE(differing(pixels(image, red), across + down - further), QRegion());
    }
}

void PlotPainter::oneAndNoSegment() {
    ChromosomePlot plot;
    plot.joined = true;
    for (const Painter& painter : painters) {
        const QImage one = painter.chromosome(unitGeometry(), pointsOf({{50}, {50.0}}), plot);
        QVERIFY(pixels(one, blue, 0, 100).isEmpty());
        QVERIFY(!ink(one, QRect(0, 80, 200, 20)).isEmpty());
        const QImage twoInOne =
            painter.chromosome(unitGeometry(), pointsOf({{50, 50}, {50.0, 50.0}}), plot);
        QCOMPARE(differing(pixels(twoInOne, blue), dot(50, 50, 4)), QRegion());
    }
}

void PlotPainter::valuesThatAreNoNumbers() {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Points points{{20, 40, 60, 80, 100}, {50.0, nan, 50.0, 50.0, nan}};
    ChromosomePlot joined;
    joined.joined = true;
    for (const Painter& painter : painters) {
        QCOMPARE(
            differing(pixels(painter.genome(unitGeometry(), pointsOf(points), genomeOf({0})), red),
                      dot(20, 50, 2) + dot(60, 50, 2) + dot(80, 50, 2)),
            QRegion());
        QCOMPARE(differing(pixels(painter.chromosome(unitGeometry(), pointsOf(points), {}), blue),
                           dot(20, 50, 4) + dot(60, 50, 4) + dot(80, 50, 4)),
                 QRegion());
        QCOMPARE(
            differing(pixels(painter.chromosome(unitGeometry(), pointsOf(points), joined), blue),
                      rectangle(58, 48, 81, 51)),
            QRegion());
    }
}

void PlotPainter::infiniteScales() {
    const double infinity = std::numeric_limits<double>::infinity();
    PlotGeometry geometry = unitGeometry();
    geometry.minX = 7;
    geometry.minY = 5.0;
    geometry.pixPerX = geometry.pixPerY = infinity;
    ChromosomePlot plot;
    plot.referenceLines = true;
    for (const Painter& painter : painters) {
        const QImage image = painter.chromosome(geometry, pointsOf({{7}, {5.0}}), plot);
        QCOMPARE(differing(pixels(image, blue, 0, 100), dot(100, 50, 4)), QRegion());
        QCOMPARE(differing(pixels(image, white), QRegion(0, 20, 200, 60) - dot(100, 50, 4)),
                 QRegion());
        const QImage genome = painter.genome(geometry, pointsOf({{7}, {5.0}}), genomeOf({0}));
        QCOMPARE(differing(pixels(genome, red, 0, 100), dot(100, 50, 2)), QRegion());
    }
}

void PlotPainter::noSize() {
    for (const Painter& painter : painters) {
        QVERIFY(painter.chromosome(PlotGeometry(), {}, {}).isNull());
        QVERIFY(painter.genome(PlotGeometry(), {}, genomeOf({0})).isNull());
    }
}

QTEST_MAIN(PlotPainter)
#include "tst_plot_painter.moc"
