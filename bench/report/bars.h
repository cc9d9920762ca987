#pragma once

#include "report/samples.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

// What came of comparing a measurement with its bar.
struct Verdict {
    QString what;            // was measured
    QString measured;        // with its unit
    QString bar;             // "at most 9 x"
    std::optional<bool> met; // empty where the file was too small to judge

    QStringList cells() const; // measured, bar, met
};

// One line of bench/bars.tsv, which describes the fields.
struct Bar {
    QString relation;
    double limit = 0.0;
    double growth = 0.0;
    QString unit;
    qint64 from = 0;

    // Judges a ratio, a fraction, seconds or bytes, measured with a file of so many lines.
    Verdict judge(const QString& what, double measured, qint64 lines) const;

    // Ratio of the medians: ours to the other's for "at most", the other's to ours for "at least".
    double ratio(const Samples& ours, const Samples& other) const;
};

class Bars {
public:
    explicit Bars(const QString& fileName);    // throws on a malformed file
    Bar operator[](const QString& name) const; // and on an unknown name

private:
    QMap<QString, Bar> m_bars;
};
