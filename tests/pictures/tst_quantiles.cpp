#include "quantiles.h"

#include <QTest>
#include <cmath>
#include <limits>

// The numbers behind a quantile-quantile plot.
class Quantiles : public QObject {
    Q_OBJECT

private slots:
    void ranksWhatIsAProbability();
    void bandOfExtremes_data();
    void bandOfExtremes();
    void bandHoldsWhatIsExpected();
};

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

QTEST_GUILESS_MAIN(Quantiles)
#include "tst_quantiles.moc"
