#include "plain/plain_painter.h"
#include "plot/plot_painter.h"

#include <QRegion>
#include <QTest>
#include <cmath>
#include <limits>

// Where exactly the plots put which colour. Every test is held against the plain painter too, since
// the random comparison rests on that one's being right.
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
    void referenceLines_data();
    void referenceLines();
    void chromosomeLabels();
    void labelOfTheLastChromosome();
    void title();
    void positionScale();
    void noPoints();
    void noSize();
};

namespace {

constexpr QRgb red = 0xffff3232, blue = 0xff3232ff, grey = 0xff323232, white = 0xffffffff;

struct Painter {
    QImage (*genome)(const PlotGeometry&, PlotPoints, const GenomePlot&);
    QImage (*chromosome)(const PlotGeometry&, PlotPoints, const ChromosomePlot&);
};

constexpr Painter painters[] = {{paintGenome, paintChromosome},
                                {plain::paintGenome, plain::paintChromosome}};

// One pixel per unit, so that position p lies in column p and value v at 100 - v.
PlotGeometry unitGeometry() {
    PlotGeometry geometry;
    geometry.width = 200;
    geometry.height = 100;
    geometry.minX = 0;
    geometry.maxX = 200;
    geometry.maxY = 100.0;
    geometry.pixPerX = 1.0;
    geometry.pixPerY = 1.0;
    return geometry;
}

GenomePlot genomeOf(const QVector<int>& startValue) {
    GenomePlot plot;
    plot.startValue = startValue;
    for (int k = 0; k < startValue.size(); ++k) {
        plot.tags << QString(k, u' '); // blanks: labels that differ and show nothing
        plot.colorValue << (k % 2 == 0 ? 255 : 50);
    }
    return plot;
}

PlotPoints pointsOf(const Points& points) {
    return {points.positions, points.values};
}

// The pixels of a colour between the title's band and the labels at the bottom.
QRegion pixels(const QImage& image, QRgb color, int top = 20, int bottom = 80) {
    QRegion region;
    for (int y = top; y < bottom; ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == color)
                region += QRect(x, y, 1, 1);
    return region;
}

// Where the two regions differ; an empty region where nowhere.
QRegion differing(const QRegion& region, const QRegion& expected) {
    return region.xored(expected);
}

// What text leaves on white: its edges have any shade.
QRegion ink(const QImage& image, const QRect& area) {
    QRegion region = area;
    return region - pixels(image, white, area.top(), area.bottom() + 1);
}

bool isReddish(const QImage& image, const QRegion& region) {
    int redness = 0;
    for (const QRect& rect : region)
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            for (int x = rect.left(); x <= rect.right(); ++x)
                redness += qRed(image.pixel(x, y)) - qGreen(image.pixel(x, y));
    return redness > 50;
}

QRegion rectangle(int left, int top, int right, int bottom) {
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

// Of two equally wide pens, how far a dot reaches: 2 pixels left and up of its place, or 1.
QRegion dot(int x, int y, int penWidth) {
    const int half = penWidth / 2;
    return rectangle(x - half, y - half, x + half - 1, y + half - 1);
}

} // namespace

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

void PlotPainter::referenceLines_data() {
    QTest::addColumn<double>("minY");
    QTest::addColumn<double>("pixPerY");
    QTest::addColumn<QList<int>>("rows"); // of 7.3, 6, 5, 4, 3
    QTest::newRow("all in view") << 0.0 << 10.0 << QList<int>({27, 40, 50, 60, 70});
    QTest::newRow("cut, not rounded") << 0.0 << 9.0 << QList<int>({35, 46, 55, 64, 73});
    QTest::newRow("some below the image") << 5.5 << 20.0 << QList<int>({64, 90, -1, -1, -1});
    QTest::newRow("some above it") << 0.0 << 18.0 << QList<int>({-1, -1, 10, 28, 46});
    QTest::newRow("a bottom edge") << 3.0 << 20.0 << QList<int>({14, 40, 60, 80, 100});
    QTest::newRow("a view below all") << -9.0 << 12.0 << QList<int>({-1, -1, -1, -1, -1});
}

void PlotPainter::referenceLines() {
    QFETCH(double, minY);
    QFETCH(double, pixPerY);
    QFETCH(QList<int>, rows);
    const QRgb colors[] = {0xff19b419, 0xff8c8c8c, 0xffaaaaaa, 0xffc8c8c8, 0xffe6e6e6};
    PlotGeometry geometry = unitGeometry();
    geometry.minY = minY;
    geometry.pixPerY = pixPerY;
    ChromosomePlot plot;
    plot.referenceLines = true;
    GenomePlot genome = genomeOf({0});
    genome.referenceLines = true;
    const Points far{{-50}, {0.0}};
    for (const Painter& painter : painters) {
        for (const QImage& image : {painter.chromosome(geometry, pointsOf(far), plot),
                                    painter.genome(geometry, pointsOf(far), genome)}) {
            for (int level = 0; level < 5; ++level) {
                const QRegion expected =
                    rows[level] < 0 ? QRegion() : QRegion(150, rows[level] - 1, 10, 2);
                QCOMPARE(differing(pixels(image, colors[level]) & QRect(150, 20, 10, 60),
                                   expected & QRect(150, 20, 10, 60)),
                         QRegion());
            }
        }
        plot.referenceLines = genome.referenceLines = false;
        for (const QImage& image : {painter.chromosome(geometry, pointsOf(far), plot),
                                    painter.genome(geometry, pointsOf(far), genome)})
            QCOMPARE(differing(pixels(image, white), QRegion(0, 20, 200, 60)), QRegion());
        plot.referenceLines = genome.referenceLines = true;
    }
}

void PlotPainter::chromosomeLabels() {
    GenomePlot plot = genomeOf({0, 70, 130});
    plot.tags = QStringList{"I", "H", "I"};
    const Points points{{10, 20, 50, 70, 80, 110, 130, 140, 180, 199}, QList<double>(10, 60.0)};
    for (const Painter& painter : painters) {
        const QImage image = painter.genome(unitGeometry(), pointsOf(points), plot);
        const QRegion firstInk = ink(image, QRect(0, 80, 65, 20)),
                      secondInk = ink(image, QRect(70, 80, 45, 20)),
                      thirdInk = ink(image, QRect(120, 80, 80, 20));
        QVERIFY(isReddish(image, firstInk));
        QVERIFY(!isReddish(image, secondInk));
        QVERIFY(isReddish(image, thirdInk));
        const QRect first = firstInk.boundingRect(), second = secondInk.boundingRect(),
                    third = thirdInk.boundingRect();
        QVERIFY(!first.isEmpty() && !second.isEmpty() && !third.isEmpty());
        // In the middle between the first point and the last; of the last chromosome, the last but
        // one.
        QVERIFY2(std::abs(first.center().x() - 30) <= 2, qPrintable(QString::number(first.x())));
        QVERIFY2(std::abs(second.center().x() - 90) <= 2, qPrintable(QString::number(second.x())));
        QVERIFY2(std::abs(third.center().x() - 155) <= 2, qPrintable(QString::number(third.x())));
    }
}

// Alone, it has the painter's own font; behind others, the labels' one.
void PlotPainter::labelOfTheLastChromosome() {
    GenomePlot plot = genomeOf({0});
    plot.tags = QStringList{"H"};
    for (const Painter& painter : painters) {
        const QImage image =
            painter.genome(unitGeometry(), pointsOf({{40, 80, 199}, {60.0, 60.0, 60.0}}), plot);
        const QRegion labelInk = ink(image, QRect(0, 80, 200, 20));
        const QRect label = labelInk.boundingRect();
        QVERIFY(isReddish(image, labelInk));
        QVERIFY(!label.isEmpty());
        QVERIFY2(std::abs(label.center().x() - 60) <= 2, qPrintable(QString::number(label.x())));
    }
}

void PlotPainter::title() {
    PlotGeometry geometry = unitGeometry();
    geometry.width = 800;
    geometry.height = 300;
    geometry.realMaxY = 12.3456789;
    GenomePlot plot = genomeOf({0});
    plot.title = QStringLiteral("study.txt");
    for (const Painter& painter : painters) {
        const QImage genome = painter.genome(geometry, pointsOf({{50}, {50.0}}), plot);
        const QImage chromosome = painter.chromosome(geometry, pointsOf({{50}, {50.0}}), {});
        const QRect wide = ink(genome, QRect(0, 0, 800, 150)).boundingRect();
        const QRect narrow = ink(chromosome, QRect(0, 0, 800, 150)).boundingRect();
        for (const QRect& text : {wide, narrow}) {
            QVERIFY(text.top() >= 0 && text.bottom() < 20);
            QVERIFY(std::abs(text.center().x() - 400) <= 3);
        }
        QVERIFY(wide.width() > narrow.width());
    }
}

void PlotPainter::positionScale() {
    PlotGeometry geometry = unitGeometry();
    geometry.width = 600;
    geometry.realMinX = 1000;
    geometry.realMaxX = 151000;
    for (const Painter& painter : painters) {
        const QImage image = painter.chromosome(geometry, pointsOf({{50}, {50.0}}), {});
        const QRegion texts = ink(image, QRect(0, 70, 600, 30));
        const QRect left = (texts & QRect(0, 0, 200, 100)).boundingRect(),
                    middle = (texts & QRect(200, 0, 200, 100)).boundingRect(),
                    right = (texts & QRect(400, 0, 200, 100)).boundingRect();
        QVERIFY(left.left() <= 3 && left.isValid());
        QVERIFY(std::abs(middle.center().x() - 300) <= 3);
        QVERIFY(right.right() >= 596 && right.isValid());
        QVERIFY(texts.boundingRect().bottom() < 98);
        QVERIFY(middle.width() > right.width() && right.width() > left.width());
    }
}

void PlotPainter::noPoints() {
    PlotGeometry geometry = plotGeometry(Points(), QSize(500, 400));
    ChromosomePlot plot;
    for (const bool joined : {false, true}) {
        plot.joined = joined;
        for (const Painter& painter : painters) {
            const QImage image = painter.chromosome(geometry, {}, plot);
            QCOMPARE(image.size(), QSize(400, 300));
            const QRect text = ink(image, QRect(0, 0, 400, 300)).boundingRect();
            QVERIFY(text.isValid());
            QVERIFY(std::abs(text.center().x() - 200) <= 3);
            QVERIFY(std::abs(text.center().y() - 150) <= 6);
        }
    }
    for (const Painter& painter : painters) {
        const QImage image = painter.genome(geometry, {}, genomeOf({0, 5}));
        const QRect text = ink(image, QRect(0, 0, 400, 300)).boundingRect();
        QVERIFY(text.isValid() && text.bottom() < 20);
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
