#include "exact_pixels.h"

#include <QTest>
#include <cmath>

// Reference lines, labels, titles and scales: where they stand, and in which colour.
class PlotLabels : public QObject {
    Q_OBJECT

private slots:
    void referenceLines_data();
    void referenceLines();
    void chromosomeLabels();
    void labelOfTheLastChromosome();
    void labelsAroundTheImage_data();
    void labelsAroundTheImage();
    void title();
    void positionScale();
    void noPoints();
};

void PlotLabels::referenceLines_data() {
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

void PlotLabels::referenceLines() {
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

void PlotLabels::chromosomeLabels() {
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
void PlotLabels::labelOfTheLastChromosome() {
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

void PlotLabels::labelsAroundTheImage_data() {
    QTest::addColumn<int>("width"); // of the stretch that the label stands under
    QTest::newRow("too narrow") << 9;
    QTest::newRow("wide") << 90;
    QTest::newRow("wider than the image") << 500;
    QTest::newRow("backwards") << -90;
}

// Left of the image, right of it, and cut by its edges.
void PlotLabels::labelsAroundTheImage() {
    QFETCH(int, width);
    GenomePlot plot = genomeOf({0, 100'000});
    plot.tags = QStringList{"chromosome", "Y"};
    int shown = 0, hidden = 0;
    for (int start = -600; start < 600; start += 7) {
        // The second chromosome lies far away, so that only its first point ends the first one.
        const Points points{{start, start + width, 200'000}, {60.0, 60.0, 60.0}};
        const QImage image = paintGenome(unitGeometry(), pointsOf(points), plot);
        QCOMPARE(image, plain::paintGenome(unitGeometry(), pointsOf(points), plot));
        const bool isShown = !ink(image, QRect(0, 80, 200, 20)).isEmpty();
        shown += isShown ? 1 : 0;
        hidden += isShown ? 0 : 1;
    }
    QVERIFY(shown > 0);
    QVERIFY(hidden > 0);
}

void PlotLabels::title() {
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

void PlotLabels::positionScale() {
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

void PlotLabels::noPoints() {
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

QTEST_MAIN(PlotLabels)
#include "tst_plot_labels.moc"
