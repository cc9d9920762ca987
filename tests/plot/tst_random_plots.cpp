#include "exact_pixels.h"
#include "plain_geometry.h"
#include "plain_painter.h"
#include "plot_painter.h"
#include "support/random.h"

#include <QTest>
#include <limits>

// The painter and the geometry against the reference, pixel by pixel, on random data in both views.
class RandomPlots : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { m_seed = runSeed(); }
    void genome_data() { addGroups(); }
    void genome();
    void chromosome_data() { addGroups(); }
    void chromosome();
    void geometry();
    void dotsAroundEveryEdge();
    void crowdedImages();
    void segmentsInOneColumn();
    void manyPoints();

private:
    static void addGroups();

    std::uint64_t m_seed = 0;
};

namespace {

constexpr int groups = 10;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Between the painter and the reference.
QString difference(const PlotGeometry& geometry, const Points& points, const GenomePlot& plot) {
    const PlotPoints shown{points.positions, points.values};
    return plain::pixelDifference(paintGenome(geometry, shown, plot),
                                  plain::paintGenome(geometry, shown, plot));
}

QString difference(const PlotGeometry& geometry, const Points& points, const ChromosomePlot& plot) {
    const PlotPoints shown{points.positions, points.values};
    return plain::pixelDifference(paintChromosome(geometry, shown, plot),
                                  plain::paintChromosome(geometry, shown, plot));
}

// How one plot's positions follow each other.
enum class Walk { Sorted, Anywhere, Column, Zigzag, Extreme };

int nextPosition(Random& random, Walk walk, int position) {
    switch (walk) {
    case Walk::Sorted:
        return position + random.below(2000);
    case Walk::Anywhere:
        return random.between(-100, 100'000);
    case Walk::Column:
        return position + (random.oneIn(20) ? random.below(5000) : 0);
    case Walk::Zigzag:
        return position + random.between(-300, 600);
    case Walk::Extreme:
        return static_cast<int>(random.bits());
    }
    return position;
}

double nextValue(Random& random, int oddness) {
    if (random.oneIn(oddness))
        return random.oneOf({notANumber, -notANumber, infinity, -infinity, 1e300, -1e300, 0.0, -0.0,
                             1e10, -1e10, 5e-324, 40000.0});
    return random.fraction() * random.oneOf({1.0, 3.0, 8.0, 40.0});
}

Points randomPoints(Random& random, int most) {
    Points points;
    const Walk walk = random.oneOf(
        {Walk::Sorted, Walk::Sorted, Walk::Anywhere, Walk::Column, Walk::Zigzag, Walk::Extreme});
    const int oddness = random.oneOf({5, 50, 1'000'000, 1'000'000});
    int position = random.below(10'000);
    double value = nextValue(random, oddness);
    const bool isFlat = random.oneIn(10);
    for (int count = random.below(random.oneOf({2, 4, most})) + (random.oneIn(20) ? 0 : 1);
         count > 0; --count) {
        points.positions.append(position);
        points.values.append(value);
        position = random.oneIn(30) ? position : nextPosition(random, walk, position);
        value = isFlat ? value : nextValue(random, oddness);
    }
    return points;
}

QSize randomScreen(Random& random) {
    if (random.oneIn(6)) // images of no more than a few pixels
        return {random.between(0, 12), random.between(0, 12)};
    return {random.between(50, 400), random.between(50, 300)};
}

// The points' own view, or part of it, so that points lie around the image and far outside.
PlotGeometry randomGeometry(Random& random, const Points& points) {
    PlotGeometry geometry = plotGeometry(points, randomScreen(random));
    if (random.oneIn(3))
        return geometry;
    const double zoom = random.oneOf({1.5, 3.0, 20.0, 1000.0});
    if (random.oneIn(2)) {
        geometry.pixPerX *= zoom;
        geometry.minX = points.positions.isEmpty() ? 0 : random.oneOf(points.positions);
    }
    if (random.oneIn(2)) {
        geometry.pixPerY *= zoom;
        geometry.minY = points.values.isEmpty() ? 0.0 : random.oneOf(points.values) - 0.5;
    }
    if (random.oneIn(10))
        geometry.pixPerX = random.oneOf({infinity, -infinity, notANumber, 0.0, -1.0});
    if (random.oneIn(10))
        geometry.pixPerY = random.oneOf({infinity, -infinity, notANumber, 0.0, -1.0});
    return geometry;
}

GenomePlot randomGenome(Random& random, const Points& points) {
    GenomePlot plot;
    plot.title = random.oneOf({QStringLiteral("data.txt"), QString()});
    plot.referenceLines = random.oneIn(2);
    const bool isSorted = random.oneIn(2);
    for (int count = random.oneOf({1, 2, 3, 10, 40}); count > 0; --count) {
        const int start = points.positions.isEmpty() ? 0 : random.oneOf(points.positions);
        plot.chromosomes << chromosomeFrom(
            start, random.oneOf({QStringLiteral("1"), QStringLiteral("chr2"), QString(),
                                 QStringLiteral("X"), QString::number(count)}));
    }
    if (isSorted)
        std::sort(plot.chromosomes.begin(), plot.chromosomes.end(),
                  [](const auto& a, const auto& b) { return a.startValue < b.startValue; });
    return plot;
}

ChromosomePlot randomChromosome(Random& random, const Points& points) {
    ChromosomePlot plot;
    plot.joined = random.oneIn(2);
    plot.referenceLines = random.oneIn(2);
    if (points.positions.isEmpty() || random.oneIn(2))
        return plot;
    plot.highlight = {random.oneOf(points.positions), random.oneOf(points.positions)};
    if (!random.oneIn(8) && plot.highlight.low > plot.highlight.high)
        std::swap(plot.highlight.low, plot.highlight.high);
    return plot;
}

// Compares one group's share of random plots, which `randomPlot` makes for their points.
template <typename MakePlot>
void compare(std::uint64_t firstSeed, MakePlot randomPlot) {
    QFETCH(int, group);
    Random random(firstSeed + static_cast<std::uint64_t>(group));
    for (int i = 0; i < randomCases(6000) / groups; ++i) {
        const Points points = randomPoints(random, 400);
        const PlotGeometry geometry = randomGeometry(random, points);
        const QString found = difference(geometry, points, randomPlot(random, points));
        QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("case %1, ").arg(i) + found));
    }
}

} // namespace

void RandomPlots::addGroups() {
    QTest::addColumn<int>("group");
    for (int group = 0; group < groups; ++group)
        QTest::addRow("group %d", group) << group;
}

void RandomPlots::genome() {
    compare(m_seed, randomGenome);
}

void RandomPlots::chromosome() {
    compare(m_seed + 1000, randomChromosome);
}

void RandomPlots::geometry() {
    Random random(m_seed);
    for (int i = 0; i < randomCases(6000); ++i) {
        const Points points = randomPoints(random, 400);
        const QSize screen = randomScreen(random);
        if (!points.positions.isEmpty())
            QCOMPARE(plain::toText(plotGeometry(points, screen)),
                     plain::toText(plain::plotGeometry(points, screen)));
    }
}

// A dot on every pixel around the image's edge, one image for each.
void RandomPlots::dotsAroundEveryEdge() {
    PlotGeometry geometry = plotGeometry({{0, 20}, {0.0, 30.0}}, QSize(25, 40));
    geometry.minX = 0;
    geometry.minY = 0.0;
    geometry.pixPerX = geometry.pixPerY = 1.0;
    const GenomePlot plot = genomeOf({0});
    for (int x = -6; x <= geometry.width + 6; ++x) {
        for (int y = -6; y <= geometry.height + 6; ++y) {
            const Points points{{x}, {double(geometry.height - y)}};
            QCOMPARE(difference(geometry, points, plot), QString());
            QCOMPARE(difference(geometry, points, ChromosomePlot()), QString());
        }
    }
}

// Dots of both colours, labels and title on the same few pixels, each painted over many times.
void RandomPlots::crowdedImages() {
    Random random(m_seed);
    for (int i = 0; i < randomCases(6000) / 10; ++i) {
        PlotGeometry geometry;
        geometry.width = random.between(6, 40);
        geometry.height = random.between(6, 30);
        geometry.minX = 0;
        geometry.pixPerX = 0.001;
        geometry.pixPerY = 1.0;
        Points points;
        for (int count = 400; count > 0; --count) {
            points.positions.append(random.below(1000 * geometry.width));
            const bool isNumber = !random.oneIn(8);
            points.values.append(isNumber ? random.between(-1, geometry.height + 1) : notANumber);
        }
        const int middle = 1000 * random.below(geometry.width) + 500;
        ChromosomePlot chromosome;
        chromosome.highlight = {0, middle};
        QCOMPARE(difference(geometry, points, chromosome), QString());
        const GenomePlot genome = genomeOf({0, middle, middle + 1500}, {"HHH", "WWW", "XX"});
        QCOMPARE(difference(geometry, points, genome), QString());
    }
}

// Up and down one column, within the image and to the limits of int.
void RandomPlots::segmentsInOneColumn() {
    Random random(m_seed);
    for (int i = 0; i < randomCases(6000) / 10; ++i) {
        PlotGeometry geometry;
        geometry.width = 20;
        geometry.height = 60;
        geometry.minX = 0;
        geometry.pixPerX = 0.01;
        geometry.pixPerY = 1.0;
        const double reach = random.oneOf({30.0, 100.0, 9990.0, 10'100.0, 33'000.0, 1e6, 3e9});
        Points points;
        for (int count = random.between(2, 12); count > 0; --count) {
            points.positions.append(1000 + random.below(random.oneOf({100, 110})));
            points.values.append(std::floor(2.0 * reach * (random.fraction() - 0.5)));
        }
        ChromosomePlot plot;
        plot.joined = true;
        plot.highlight = {1000, random.oneOf({0, 1050})};
        QCOMPARE(difference(geometry, points, plot), QString());
    }
}

// A real chromosome's number of points, on a plot of the usual size.
void RandomPlots::manyPoints() {
    Random random(m_seed);
    Points points;
    for (int i = 0; i < 30'000; ++i) {
        points.positions.append(i * 70 + random.below(200));
        points.values.append(-std::log10(random.fraction() + 1e-9));
    }
    const PlotGeometry geometry = plotGeometry(points, QSize(1000, 800));
    for (const bool joined : {false, true}) {
        ChromosomePlot plot;
        plot.joined = joined;
        plot.referenceLines = true;
        plot.highlight = {500'000, 900'000};
        QCOMPARE(difference(geometry, points, plot), QString());
    }
    GenomePlot plot = randomGenome(random, points);
    QCOMPARE(difference(geometry, points, plot), QString());
}

QTEST_MAIN(RandomPlots)
#include "tst_random_plots.moc"
