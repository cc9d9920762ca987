#include "exact_pixels.h"

#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QTest>

// Reference lines, labels, titles and scales: where they stand, in which font and which colour.
class PlotLabels : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void referenceLines_data();
    void referenceLines();
    void chromosomeLabels();
    void onlyChromosomeLabel();
    void labelsAroundTheImage_data();
    void labelsAroundTheImage();
    void chromosomeWithoutPoints();
    void genomeWithoutPoints();
    void onePointJoined();
};

namespace {

constexpr QRgb black = 0xff000000;
constexpr int atBottom = Qt::AlignBottom | Qt::AlignCenter;

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

    // In a rectangle that starts at the top edge.
    void addText(const QFont& font, QRgb color, int left, int width, int height, int alignment,
                 const QString& text) {
        QPainter painter(&m_image);
        painter.setFont(font);
        painter.setPen(QColor(color));
        painter.drawText(QRect(left, 0, width, height), alignment, text);
    }

    // In rows of 7.3, 6, 5, 4 and 3: two pixels thick, with labels in the default font on them.
    void addReferenceLines(const QList<int>& rows) {
        const QRgb colors[] = {0xff19b419, 0xff8c8c8c, 0xffaaaaaa, 0xffc8c8c8, 0xffe6e6e6};
        const char* const labels[] = {"7.3", "6", "5", "4", "3"};
        for (int level = 0; level < 5; ++level) {
            if (rows[level] < 0)
                continue;
            QPainter(&m_image).fillRect(0, rows[level] - 1, m_image.width(), 2,
                                        QColor(colors[level]));
            addText({}, colors[level], 0, m_image.width(), rows[level],
                    Qt::AlignBottom | Qt::AlignLeft, labels[level]);
        }
    }

    QString differenceTo(const QImage& image) const {
        return plain::pixelDifference(image, m_image);
    }
    QString differenceTo(const QImage& image, const QRect& area) const {
        return plain::pixelDifference(image.copy(area), m_image.copy(area));
    }

private:
    QImage m_image;
};

// Of ten pixels per unit.
const QList<int> usualRows{27, 40, 50, 60, 70};

PlotGeometry tenPerUnit() {
    PlotGeometry geometry = unitGeometry();
    geometry.pixPerY = 10.0;
    return geometry;
}

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
    QTest::addColumn<QList<int>>("rows");
    QTest::newRow("all in view") << 0.0 << 10.0 << usualRows;
    QTest::newRow("truncated") << 0.0 << 9.0 << QList<int>({35, 46, 55, 64, 73});
    QTest::newRow("some below the image") << 5.5 << 20.0 << QList<int>({64, 90, 110, 130, 150});
    QTest::newRow("some above it") << 0.0 << 18.0 << QList<int>({-31, -8, 10, 28, 46});
    QTest::newRow("at the bottom edge") << 3.0 << 20.0 << QList<int>({14, 40, 60, 80, 100});
    QTest::newRow("all above it") << -9.0 << 12.0 << QList<int>({-95, -80, -68, -56, -44});
    // At a large scale, 7.3 is the only level near the image.
    for (const int y : {-30, -1, 0, 1, 2, 12, 99, 100, 101, 108, 150, 299, 1000})
        QTest::addRow("in row %d", y) << 7.3 - (100 - y + (y > 100 ? -0.5 : 0.5)) / 1e4 << 1e4
                                      << QList<int>({y, -1, -1, -1, -1});
}

void PlotLabels::referenceLines() {
    QFETCH(double, minY);
    QFETCH(double, pixPerY);
    QFETCH(QList<int>, rows);
    PlotGeometry geometry = unitGeometry();
    geometry.minY = minY;
    geometry.pixPerY = pixPerY;
    const QRect left(0, 0, 40, 100); // of the texts in the middle
    for (const bool shown : {true, false}) {
        ExpectedPlot expected(geometry);
        if (shown)
            expected.addReferenceLines(rows);
        GenomePlot genome = genomeOf({0});
        genome.referenceLines = shown;
        for (const Painter& painter : painters)
            for (const QImage& image : {painter.chromosome(geometry, {}, {{}, false, shown}),
                                        painter.genome(geometry, {}, genome)})
                QCOMPARE(expected.differenceTo(image, left), QString());
    }
}

// In the middle between the first point and the last; of the last chromosome, the last but one.
void PlotLabels::chromosomeLabels() {
    const GenomePlot plot = genomeOf({0, 70, 130}, {"I", "H", "I"});
    const Points points{{10, 20, 50, 70, 80, 110, 130, 140, 180, 199}, QList<double>(10, 60.0)};
    ExpectedPlot expected(unitGeometry());
    expected.addText(calibri(10), red, 10, 40, 100, atBottom, "I");
    expected.addText(calibri(10), grey, 70, 40, 100, atBottom, "H");
    expected.addText(calibri(10), red, 130, 50, 100, atBottom, "I");
    for (const Painter& painter : painters)
        QCOMPARE(expected.differenceTo(painter.genome(unitGeometry(), pointsOf(points), plot),
                                       QRect(0, 50, 200, 50)),
                 QString());
}

// The font for labels is set when the second chromosome begins. The only one's has the default.
void PlotLabels::onlyChromosomeLabel() {
    const GenomePlot plot = genomeOf({0}, {"H"});
    ExpectedPlot expected(unitGeometry());
    expected.addText({}, red, 40, 40, 100, atBottom, "H");
    for (const Painter& painter : painters) {
        const QImage image =
            painter.genome(unitGeometry(), pointsOf({{40, 80, 199}, {60.0, 60.0, 60.0}}), plot);
        QCOMPARE(expected.differenceTo(image, QRect(0, 50, 200, 50)), QString());
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
    const GenomePlot plot = genomeOf({0, 100'000}, {"chromosome", "Y"});
    int shown = 0, hidden = 0;
    for (int start = -600; start < 600; start += 7) {
        // The second chromosome is far away. Its one point ends the first chromosome's label.
        const Points points{{start, start + width, 200'000}, {60.0, 60.0, 60.0}};
        const QImage image = paintGenome(unitGeometry(), pointsOf(points), plot);
        QCOMPARE(plain::pixelDifference(image,
                                        plain::paintGenome(unitGeometry(), pointsOf(points), plot)),
                 QString());
        ++(ink(image, QRect(0, 80, 200, 20)).isEmpty() ? hidden : shown);
    }
    QVERIFY(shown > 0);
    QVERIFY(hidden > 0);
}

void PlotLabels::chromosomeWithoutPoints() {
    ExpectedPlot expected(unitGeometry());
    expected.addText(calibri(12), black, 0, 200, 100, Qt::AlignCenter, "no points");
    for (const Painter& painter : painters)
        for (const bool joined : {false, true})
            QCOMPARE(
                expected.differenceTo(painter.chromosome(unitGeometry(), {}, {{}, joined, false})),
                QString());
}

void PlotLabels::genomeWithoutPoints() {
    PlotGeometry geometry = tenPerUnit();
    geometry.realMaxY = 12.3456789;
    GenomePlot plot = genomeOf({0, 50}, {"H", "I"});
    plot.title = QStringLiteral("a.txt");
    plot.referenceLines = true;
    ExpectedPlot expected(geometry);
    expected.addReferenceLines(usualRows);
    expected.addText(calibri(12), black, 0, 200, 20, Qt::AlignCenter, "a.txt, max(-logP)=12.3457");
    for (const Painter& painter : painters)
        QCOMPARE(expected.differenceTo(painter.genome(geometry, {}, plot)), QString());
}

// There is no segment, not even a highlighted one, but everything else.
void PlotLabels::onePointJoined() {
    PlotGeometry geometry = tenPerUnit();
    geometry.width = 400;
    geometry.realMinX = 1000;
    geometry.realMaxX = 151000;
    geometry.realMaxY = 12.3456789;
    ExpectedPlot expected(geometry);
    expected.addReferenceLines(usualRows);
    expected.addText(calibri(12), black, 0, 400, 20, Qt::AlignCenter, "max=12.3457");
    const auto addScale = [&](int alignment, const QString& text) {
        expected.addText(calibri(10), black, 0, 400, 98, Qt::AlignBottom | alignment, text);
    };
    addScale(Qt::AlignLeft, "1,000");
    addScale(Qt::AlignRight, "151,000");
    addScale(Qt::AlignCenter, "|<-- 150,000 -->|");
    const Points point{{50}, {4.5}};
    for (const Painter& painter : painters)
        for (const PositionRange highlight : {PositionRange{}, PositionRange{0, 100}})
            QCOMPARE(expected.differenceTo(
                         painter.chromosome(geometry, pointsOf(point), {highlight, true, true})),
                     QString());
}

QTEST_MAIN(PlotLabels)
#include "tst_plot_labels.moc"
