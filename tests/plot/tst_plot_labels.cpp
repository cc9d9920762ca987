#include "exact_pixels.h"

#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QTest>
#include <cmath>

// Reference lines, labels, titles and scales: where they stand, in which font and which colour.
class PlotLabels : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void referenceLines_data();
    void referenceLines();
    void referenceLinesAtTheEdges_data();
    void referenceLinesAtTheEdges();
    void chromosomeLabels();
    void fontOfTheLastLabel();
    void labelsAroundTheImage_data();
    void labelsAroundTheImage();
    void title();
    void positionScale();
    void noPoints();
    void genomeWithoutPoints();
    void onePointJoined();
};

namespace {

constexpr QRgb black = 0xff000000, green = 0xff19b419;

QFont calibri(int pointSize) {
    return QFont("Calibri", pointSize, QFont::Normal, false);
}

// A plot pieced together from the lines and texts that a test expects.
class ExpectedPlot {
public:
    explicit ExpectedPlot(const PlotGeometry& geometry)
        : m_image(geometry.width, geometry.height, QImage::Format_RGB32) {
        m_image.fill(Qt::white);
    }

    void addText(const QFont& font, QRgb color, const QRect& area, int alignment,
                 const QString& text) {
        QPainter painter(&m_image);
        painter.setFont(font);
        painter.setPen(QColor(color));
        painter.drawText(area, alignment, text);
    }

    // Two pixels thick, with its label in the default font standing on it.
    void addReferenceLine(int y, QRgb color, const QString& label) {
        QPainter(&m_image).fillRect(0, y - 1, m_image.width(), 2, QColor(color));
        addText({}, color, {0, 0, m_image.width(), y}, Qt::AlignBottom | Qt::AlignLeft, label);
    }

    // Of a plot with ten pixels per unit.
    void addReferenceLines() {
        addReferenceLine(m_image.height() - 73, green, "7.3");
        addReferenceLine(m_image.height() - 60, 0xff8c8c8c, "6");
        addReferenceLine(m_image.height() - 50, 0xffaaaaaa, "5");
        addReferenceLine(m_image.height() - 40, 0xffc8c8c8, "4");
        addReferenceLine(m_image.height() - 30, 0xffe6e6e6, "3");
    }

    const QImage& image() const { return m_image; }

private:
    QImage m_image;
};

} // namespace

// Texts in the default font must differ from those in "Calibri" 10 and 12.
void PlotLabels::initTestCase() {
    QFont font = QGuiApplication::font();
    font.setPointSize(14);
    QGuiApplication::setFont(font);
}

void PlotLabels::referenceLines_data() {
    QTest::addColumn<double>("minY");
    QTest::addColumn<double>("pixPerY");
    QTest::addColumn<QList<int>>("rows"); // of 7.3, 6, 5, 4, 3; -1 if out of sight
    QTest::newRow("all in view") << 0.0 << 10.0 << QList<int>({27, 40, 50, 60, 70});
    QTest::newRow("truncated") << 0.0 << 9.0 << QList<int>({35, 46, 55, 64, 73});
    QTest::newRow("some below the image") << 5.5 << 20.0 << QList<int>({64, 90, -1, -1, -1});
    QTest::newRow("some above it") << 0.0 << 18.0 << QList<int>({-1, -1, 10, 28, 46});
    QTest::newRow("at the bottom edge") << 3.0 << 20.0 << QList<int>({14, 40, 60, 80, 100});
    QTest::newRow("all above it") << -9.0 << 12.0 << QList<int>({-1, -1, -1, -1, -1});
}

void PlotLabels::referenceLines() {
    QFETCH(double, minY);
    QFETCH(double, pixPerY);
    QFETCH(QList<int>, rows);
    const QRgb colors[] = {green, 0xff8c8c8c, 0xffaaaaaa, 0xffc8c8c8, 0xffe6e6e6};
    PlotGeometry geometry = unitGeometry();
    geometry.minY = minY;
    geometry.pixPerY = pixPerY;
    GenomePlot genome = genomeOf({0});
    const Points far{{-50}, {0.0}};
    for (const Painter& painter : painters) {
        for (const bool shown : {true, false}) {
            genome.referenceLines = shown;
            for (const QImage& image :
                 {painter.chromosome(geometry, pointsOf(far), {{}, false, shown}),
                  painter.genome(geometry, pointsOf(far), genome)}) {
                const QRect sample(150, 20, 10, 60); // right of the labels
                QRegion rest = sample;
                for (int level = 0; level < 5; ++level) {
                    const bool inSight = shown && rows[level] >= 0;
                    const QRegion line(150, rows[level] - 1, 10, 2);
                    const QRegion expected = inSight ? line & sample : QRegion();
                    QCOMPARE(differing(pixels(image, colors[level]) & sample, expected), QRegion());
                    rest -= expected;
                }
                QCOMPARE(differing(pixels(image, white) & sample, rest), QRegion());
            }
        }
    }
}

void PlotLabels::referenceLinesAtTheEdges_data() {
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("thickness"); // rows of the line that lie in the image
    QTest::addColumn<bool>("hasText");
    const auto row = [](int y, int thickness, bool hasText) {
        QTest::addRow("%d", y) << y << thickness << hasText;
    };
    row(-30, 0, false);
    row(-1, 0, false);
    row(0, 1, false);
    row(1, 2, false); // the line covers it
    row(12, 2, true);
    row(99, 2, true);
    row(100, 1, true);
    row(101, 0, true);
    row(108, 0, true);
    row(150, 0, false);
    row(1000, 0, false);
}

// At a large scale, 7.3 is the only level near the image.
void PlotLabels::referenceLinesAtTheEdges() {
    QFETCH(int, y);
    QFETCH(int, thickness);
    QFETCH(bool, hasText);
    PlotGeometry geometry = unitGeometry();
    geometry.pixPerY = 10'000.0;
    geometry.minY = 7.3 - (100 - y + (y <= 100 ? 0.5 : -0.5)) / geometry.pixPerY;
    ExpectedPlot expected(geometry);
    if (y >= 0)
        expected.addReferenceLine(y, green, "7.3");
    GenomePlot genome = genomeOf({0});
    genome.referenceLines = true;
    const QRect left(0, 0, 40, 100); // of the texts in the middle
    for (const Painter& painter : painters) {
        for (const QImage& image : {painter.chromosome(geometry, {}, {{}, false, true}),
                                    painter.genome(geometry, {}, genome)}) {
            QCOMPARE(pixels(image.copy(39, 0, 1, 100), green, 0, 100).boundingRect().height(),
                     thickness);
            QCOMPARE(!(ink(image, left) - QRegion(0, y - 1, 40, 2)).isEmpty(), hasText);
            QCOMPARE(plain::difference(image.copy(left), expected.image().copy(left)), QString());
        }
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

// The painter's default font, unless another label was drawn before it.
void PlotLabels::fontOfTheLastLabel() {
    const int bottom = Qt::AlignBottom | Qt::AlignCenter;
    const QRect lowest(0, 60, 200, 40);
    GenomePlot one = genomeOf({0}), two = genomeOf({0, 100});
    one.tags = QStringList{"H"};
    two.tags = QStringList{"I", "H"};
    const Points points{{40, 80, 199}, {70.0, 70.0, 70.0}};
    const Points more{{10, 60, 120, 160, 199}, QList<double>(5, 70.0)};
    ExpectedPlot onlyLabel(unitGeometry()), lastLabel(unitGeometry());
    onlyLabel.addText({}, red, {40, 0, 40, 100}, bottom, "H");
    lastLabel.addText(calibri(10), red, {10, 0, 50, 100}, bottom, "I");
    lastLabel.addText(calibri(10), grey, {120, 0, 40, 100}, bottom, "H");
    for (const Painter& painter : painters) {
        const QImage alone = painter.genome(unitGeometry(), pointsOf(points), one);
        QCOMPARE(plain::difference(alone.copy(lowest), onlyLabel.image().copy(lowest)), QString());
        const QImage last = painter.genome(unitGeometry(), pointsOf(more), two);
        QCOMPARE(plain::difference(last.copy(lowest), lastLabel.image().copy(lowest)), QString());
        QVERIFY(ink(alone, lowest).boundingRect().height() >
                ink(last, lowest).boundingRect().height());
    }
}

void PlotLabels::labelsAroundTheImage_data() {
    QTest::addColumn<int>("width"); // from the first point to the last
    QTest::newRow("too narrow") << 9;
    QTest::newRow("wide") << 90;
    QTest::newRow("wider than the image") << 500;
    QTest::newRow("backwards") << -90;
}

// Left of the image, right of it, and cut off by its edges.
void PlotLabels::labelsAroundTheImage() {
    QFETCH(int, width);
    GenomePlot plot = genomeOf({0, 100'000});
    plot.tags = QStringList{"chromosome", "Y"};
    int shown = 0, hidden = 0;
    for (int start = -600; start < 600; start += 7) {
        // The second chromosome is far away. Its one point ends the first chromosome's label.
        const Points points{{start, start + width, 200'000}, {60.0, 60.0, 60.0}};
        const QImage image = paintGenome(unitGeometry(), pointsOf(points), plot);
        QCOMPARE(
            plain::difference(image, plain::paintGenome(unitGeometry(), pointsOf(points), plot)),
            QString());
        const bool isShown = !ink(image, QRect(0, 80, 200, 20)).isEmpty();
        ++(isShown ? shown : hidden);
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

void PlotLabels::genomeWithoutPoints() {
    PlotGeometry geometry = unitGeometry();
    geometry.pixPerY = 10.0;
    GenomePlot plot = genomeOf({0, 50});
    plot.title = QStringLiteral("study.txt");
    plot.tags = QStringList{"H", "I"};
    plot.referenceLines = true;
    ExpectedPlot expected(geometry);
    expected.addReferenceLines();
    expected.addText(calibri(12), black, {0, 0, 200, 20}, Qt::AlignCenter,
                     "study.txt, max(-logP)=0");
    for (const Painter& painter : painters)
        QCOMPARE(plain::difference(painter.genome(geometry, {}, plot), expected.image()),
                 QString());
}

// There is no segment, but all the rest. A highlighted point is no exception.
void PlotLabels::onePointJoined() {
    PlotGeometry geometry = unitGeometry();
    geometry.pixPerY = 10.0;
    geometry.realMinX = geometry.realMaxX = 1050;
    geometry.realMaxY = 4.5;
    ExpectedPlot expected(geometry);
    expected.addReferenceLines();
    expected.addText(calibri(12), black, {0, 0, 200, 20}, Qt::AlignCenter, "max=4.5");
    const QRect bottom(0, 0, 200, 98);
    expected.addText(calibri(10), black, bottom, Qt::AlignBottom | Qt::AlignLeft, "1,050");
    expected.addText(calibri(10), black, bottom, Qt::AlignBottom | Qt::AlignRight, "1,050");
    expected.addText(calibri(10), black, bottom, Qt::AlignBottom | Qt::AlignCenter, "|<-- 0 -->|");
    for (const Painter& painter : painters)
        for (const PositionRange highlight : {PositionRange{}, PositionRange{0, 100}})
            QCOMPARE(plain::difference(painter.chromosome(geometry, pointsOf({{50}, {4.5}}),
                                                          {highlight, true, true}),
                                       expected.image()),
                     QString());
}

QTEST_MAIN(PlotLabels)
#include "tst_plot_labels.moc"
