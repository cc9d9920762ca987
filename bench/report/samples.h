#pragma once

#include <QList>
#include <QString>

// Repeated measurements of one thing. The statistics throw where there are none.
class Samples {
public:
    void add(double sample);

    double minimum() const { return quantile(0.0); }
    double median() const { return quantile(0.5); }
    double maximum() const { return quantile(1.0); }

private:
    double quantile(double share) const;

    QList<double> m_sorted;
};

// "545 ms (538 ms, 3 %)": the median, the minimum, and the spread from the minimum to the maximum
// as a share of the median.
QString secondsText(const Samples& seconds);

QString secondsText(double seconds);
QString bytesText(double bytes);
QString linesText(qint64 lines);    // "2 million lines"
QString threeDigits(double number); // three significant digits, without an exponent
