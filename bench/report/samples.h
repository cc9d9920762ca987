#pragma once

#include <QList>
#include <QString>

// Repeated measurements of one thing. The statistics need at least one.
class Samples {
public:
    void add(double sample) { m_samples.append(sample); }
    bool isEmpty() const { return m_samples.isEmpty(); }

    double minimum() const;
    double median() const;
    double maximum() const;

private:
    QList<double> m_samples;
};

// "545 ms (538 ms, 3 %)": the median, the minimum, and the spread from the minimum to the maximum
// as a share of the median.
QString secondsText(const Samples& seconds);

QString secondsText(double seconds);
QString bytesText(double bytes);
QString linesText(qint64 lines);    // "2 million lines"
QString threeDigits(double number); // three significant digits, without an exponent
