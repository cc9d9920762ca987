#include "exact_pixels.h"

#include <QTest>
#include <limits>

// Where exactly the plots put the points, and in which colour.
class PlotPainter : public QObject {
    Q_OBJECT

private slots:
    void genomeDots_data();
    void genomeDots();
    void chromosomeMarks_data();
    void chromosomeMarks();
    void dotsLieOnEarlierLabels();
    void infiniteScales();
    void noSize();
};

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Points inRow50(const QList<int>& positions) {
    return {positions, QList<double>(positions.size(), 50.0)};
}

} // namespace

void PlotPainter::genomeDots_data() {
    QTest::addColumn<Points>("points");
    QTest::addColumn<QList<int>>("starts");
    QTest::addColumn<QRegion>("reds");
    QTest::addColumn<QRegion>("greys");
    const auto row = [](const char* name, const Points& points, const QList<int>& starts,
                        const QRegion& reds, const QRegion& greys) {
        QTest::newRow(name) << points << starts << reds << greys;
    };
    row("one dot", {{50}, {40.0}}, {0}, rectangle(49, 59, 50, 60), {});
    row("a chromosome begins with its start", inRow50({10, 49, 50, 60, 119, 120, 130}),
        {1, 50, 120}, dots({10, 49, 120, 130}, 2) - dot(50, 50, 2),
        dots({50, 60, 119}, 2) - dot(120, 50, 2));
    row("the first chromosome has the colour of the point before", inRow50({10, 60, 20, 130, 30}),
        {1, 50, 120}, dots({10, 130, 30}, 2), dots({60, 20}, 2));
    row("of unordered starts, the last one reached counts", inRow50({60, 130}), {1, 120, 50, 200},
        dots({60, 130}, 2), {});
    row("of unordered starts, the very last reached counts", inRow50({60, 130}), {1, 50, 120, 50},
        {}, dots({60, 130}, 2));
    row("later dots on top", inRow50({50, 51, 49}), {0, 51}, {}, dots({51, 49}, 2));
    row("no dot without a number",
        {{20, 40, 60, 80, 100}, {50.0, notANumber, 50.0, 50.0, notANumber}}, {0},
        dots({20, 60, 80}, 2), {});
}

void PlotPainter::genomeDots() {
    QFETCH(Points, points);
    QFETCH(QList<int>, starts);
    QFETCH(QRegion, reds);
    QFETCH(QRegion, greys);
    for (const Painter& painter : painters) {
        const QImage image = painter.genome(unitGeometry(), pointsOf(points), genomeOf(starts));
        QCOMPARE(image.size(), QSize(200, 100));
        checkColors(image, {{red, reds}, {grey, greys}});
    }
}

void PlotPainter::chromosomeMarks_data() {
    QTest::addColumn<Points>("points");
    QTest::addColumn<QPoint>("highlight");
    QTest::addColumn<bool>("joined");
    QTest::addColumn<QRegion>("blues");
    QTest::addColumn<QRegion>("reds");
    const auto row = [](const char* name, const Points& points, QPoint highlight, bool joined,
                        const QRegion& blues, const QRegion& reds) {
        QTest::newRow(name) << points << highlight << joined << blues << reds;
    };
    const Points five = inRow50({0, 20, 30, 40, 50});
    row("one dot", {{50}, {40.0}}, {0, 0}, false, rectangle(48, 58, 51, 61), {});
    row("later dots on top", inRow50({50, 51, 49}), {51, 51}, false, dot(49, 50, 4),
        dot(51, 50, 4) - dot(49, 50, 4));
    row("both ends are highlighted", five, {20, 40}, false, dots({0, 50}, 4),
        dots({20, 30, 40}, 4));
    row("the usual highlight is position 0", five, {0, 0}, false, dots({20, 30, 40, 50}, 4),
        dot(0, 50, 4));
    row("an inverted highlight is empty", five, {40, 20}, false, dots({0, 20, 30, 40, 50}, 4), {});
    const Points gaps{{20, 40, 60, 80, 100}, {50.0, notANumber, 50.0, 50.0, notANumber}};
    row("no dot without a number", gaps, {0, 0}, false, dots({20, 60, 80}, 4), {});
    row("no segment without a number", gaps, {0, 0}, true, rectangle(58, 48, 81, 51), {});
    const QRegion across = rectangle(18, 48, 61, 51), down = rectangle(58, 48, 61, 71),
                  further = rectangle(58, 68, 101, 71);
    row("a segment has the colour of its end", {{20, 60, 60, 100}, {50.0, 50.0, 30.0, 30.0}},
        {60, 60}, true, further, across + down - further);
    row("a segment in one place", inRow50({50, 50}), {0, 0}, true, dot(50, 50, 4), {});
}

void PlotPainter::chromosomeMarks() {
    QFETCH(Points, points);
    QFETCH(QPoint, highlight);
    QFETCH(bool, joined);
    QFETCH(QRegion, blues);
    QFETCH(QRegion, reds);
    const ChromosomePlot plot{{highlight.x(), highlight.y()}, joined, false};
    for (const Painter& painter : painters) {
        const QImage image = painter.chromosome(unitGeometry(), pointsOf(points), plot);
        QCOMPARE(image.size(), QSize(200, 100));
        checkColors(image, {{blue, blues}, {red, reds}});
    }
}

// A chromosome without any numbers has a label but no dots. When the chromosome before it comes
// again, its dots cover that label.
void PlotPainter::dotsLieOnEarlierLabels() {
    PlotGeometry geometry = unitGeometry();
    geometry.pixPerX = 0.01;
    const GenomePlot plot = genomeOf({0, 5000, 7550}, {"", "HHHHHHHHHH", " "});
    Points points;
    const auto addDots = [&] {
        for (int value = 3; value < 20; ++value) {
            points.positions << 7560;
            points.values << value;
        }
    };
    addDots();
    points.positions << 6500 << 7549;
    points.values << notANumber << notANumber;
    addDots();
    for (const Painter& painter : painters) {
        const QImage image = painter.genome(geometry, pointsOf(points), plot);
        QVERIFY(!ink(image, QRect(65, 80, 8, 20)).isEmpty());
        QCOMPARE(differing(pixels(image, red, 80, 97), QRegion(74, 80, 2, 17)), QRegion());
    }
}

void PlotPainter::infiniteScales() {
    PlotGeometry geometry = unitGeometry();
    geometry.minX = 7;
    geometry.minY = 5.0;
    geometry.pixPerX = geometry.pixPerY = std::numeric_limits<double>::infinity();
    const Points point{{7}, {5.0}};
    for (const Painter& painter : painters) {
        checkColors(painter.chromosome(geometry, pointsOf(point), {{}, false, true}),
                    {{blue, dot(100, 50, 4)}});
        checkColors(painter.genome(geometry, pointsOf(point), genomeOf({0})),
                    {{red, dot(100, 50, 2)}});
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
