#pragma once

#include <QList>
#include <QString>

// What one thing took, measured several times.
class Samples {
public:
    void add(double sample) { m_samples.append(sample); }
    bool isEmpty() const { return m_samples.isEmpty(); }

    double minimum() const;
    double median() const;
    double spread() const; // of the largest from the smallest, as a share of the median

    Samples each(double divisor) const; // divided by it

private:
    QList<double> m_samples;
};

// "545 ms (538, 3 %)": the median, the minimum and the spread.
QString told(const Samples& seconds);

QString toldSeconds(double seconds);
QString toldBytes(double bytes);
