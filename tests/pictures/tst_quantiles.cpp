#include "quantiles.h"
#include "support/random.h"

#include <QPainter>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

// The numbers behind a quantile-quantile plot.
class Quantiles : public QObject {
    Q_OBJECT

private slots:
    void ranksWhatIsAProbability();
    void expectedOfEachRank();
    void bandOfExtremes_data();
    void bandOfExtremes();
    void bandHoldsWhatIsExpected();
    void bandOfEachRank_data();
    void bandOfEachRank();
    void dotsAreWhereTheirRanksAre();
};

namespace {

// How likely at least `rank` of `count` p-values are at most p, if nothing but chance is at work.
double chanceOfRank(int rank, int count, double p) {
    double sum = 0.0;
    for (int k = rank; k <= count; ++k)
        sum +=
            std::exp(std::lgamma(count + 1.0) - std::lgamma(k + 1.0) -
                     std::lgamma(count - k + 1.0) + k * std::log(p) + (count - k) * std::log1p(-p));
    return sum;
}

// The pixels of dots alone.
QImage dotsOf(const QImage& image) {
    const QRgb dot = qRgb(50, 50, 255);
    QImage dots(image.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            dots.setPixel(x, y, image.pixel(x, y) == dot ? dot : qRgb(255, 255, 255));
    return dots;
}

// Dot by dot, on an image without anything else.
QImage plainDots(QSize size, std::vector<double> values, double highest) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(QPen(QColor(50, 50, 255), 5, Qt::SolidLine, Qt::RoundCap));
    std::sort(values.begin(), values.end(), std::greater());
    const QRectF area(70, 40, size.width() - 90, size.height() - 100);
    const double right = 1.04 * expectedNegLog10(1, values.size());
    for (size_t i = 0; i < values.size(); ++i) {
        const double expected = expectedNegLog10(i + 1, values.size());
        painter.drawPoint(
            static_cast<int>(area.left() + expected / right * area.width()),
            static_cast<int>(area.bottom() - values[i] / (1.04 * highest) * area.height()));
    }
    return image;
}

} // namespace

void Quantiles::ranksWhatIsAProbability() {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<double> values{1.0, nan, 400.25, -0.1, 0.0, infinity, 2.0, 2.0};
    QCOMPARE(rankedValues(values), std::vector<double>({400.25, 2.0, 2.0, 1.0, 0.0}));
    QVERIFY(rankedValues({}).empty());
}

void Quantiles::bandOfExtremes_data() {
    QTest::addColumn<int>("count");
    for (const int count : {2, 100, 10'000'000})
        QTest::addRow("%d", count) << count;
}

void Quantiles::expectedOfEachRank() {
    for (const size_t count : {size_t{2}, size_t{7}, size_t{400}})
        for (size_t rank = 1; rank <= count; ++rank) {
            const double p = static_cast<double>(rank) / static_cast<double>(count + 1);
            QVERIFY(std::abs(std::pow(10.0, -expectedNegLog10(rank, count)) - p) < 1e-12);
        }
}

// The smallest of n p-values is above x with the probability (1 - x)^n.
void Quantiles::bandOfExtremes() {
    QFETCH(int, count);
    const std::vector<QuantileBand> band = quantileBand(static_cast<size_t>(count));
    const auto at = [&](double share) { return -std::log10(-std::expm1(std::log(share) / count)); };
    QCOMPARE(band.front().expected, std::log10(count + 1.0));
    QVERIFY(std::abs(band.front().high - at(0.975)) < 1e-9);
    QVERIFY(std::abs(band.front().low - at(0.025)) < 1e-9);
}

// From the largest value down, without gaps that show.
void Quantiles::bandHoldsWhatIsExpected() {
    const std::vector<QuantileBand> band = quantileBand(1'000'000);
    QVERIFY(band.size() > 100 && band.size() < 1000);
    for (size_t i = 0; i < band.size(); ++i) {
        QVERIFY(band[i].low < band[i].expected && band[i].expected < band[i].high);
        if (i > 0)
            QVERIFY(band[i].expected < band[i - 1].expected &&
                    band[i - 1].expected - band[i].expected < 0.31);
    }
    QVERIFY(band.back().expected < 0.05);
}

void Quantiles::bandOfEachRank_data() {
    QTest::addColumn<int>("count");
    for (const int count : {2, 3, 50, 1000})
        QTest::addRow("%d", count) << count;
}

// A sum of binomial chances instead of the distribution's quantiles.
void Quantiles::bandOfEachRank() {
    QFETCH(int, count);
    for (const QuantileBand& band : quantileBand(static_cast<size_t>(count))) {
        const int rank =
            static_cast<int>(std::lround(std::pow(10.0, -band.expected) * (count + 1.0)));
        QVERIFY(rank >= 1 && rank <= count);
        QVERIFY(std::abs(chanceOfRank(rank, count, std::pow(10.0, -band.high)) - 0.025) < 1e-9);
        QVERIFY(std::abs(chanceOfRank(rank, count, std::pow(10.0, -band.low)) - 0.975) < 1e-9);
    }
}

void Quantiles::dotsAreWhereTheirRanksAre() {
    Random random(runSeed());
    for (int i = randomCases(20); i > 0; --i) {
        std::vector<double> values(static_cast<size_t>(random.between(2, 400)));
        for (double& value : values)
            value = random.oneIn(10) ? random.below(4) : -std::log10(random.fraction() + 1e-12);
        PlotGeometry geometry;
        geometry.width = random.between(200, 700);
        geometry.height = random.between(200, 700);
        const std::vector<double> observed = rankedValues(values);
        const std::vector<QuantileBand> band = quantileBand(observed.size());
        std::erase_if(values, [](double value) { return value < 0.0; });
        const double highest = std::max(observed.front(), band.front().high);
        const QImage image = paintQuantiles(geometry, {QStringLiteral("any"), observed, band});
        QCOMPARE(dotsOf(image), plainDots(image.size(), values, highest));
    }
}

QTEST_MAIN(Quantiles)
#include "tst_quantiles.moc"
