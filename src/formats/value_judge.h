#pragma once

#include "refusal.h"
#include "table_format.h"

#include <QByteArray>
#include <QString>
#include <optional>

// What the values of the chosen columns look like, counted over the first lines or a whole table.
// Missing values count nowhere.
struct ValueCounts {
    qint64 rows = 0; // with a number in p or its logarithm

    qint64 pNumbers = 0;
    qint64 pTexts = 0;    // neither numbers nor missing
    qint64 pAboveOne = 0; // by more than rounding
    qint64 pNegative = 0;
    qint64 pPositive = 0;

    qint64 logNumbers = 0;
    qint64 logTexts = 0;
    qint64 logNegative = 0; // by more than rounding
    qint64 logPositive = 0;

    qint64 pairsCompared = 0; // rows with both p and its logarithm, p above the smallest double
    qint64 pairsDisagreeing = 0;
    qint64 firstDisagreeingLine = 0; // from 1
    QString firstDisagreeing;        // both texts

    qint64 positions = 0; // numbers and texts
    qint64 positionsFractional = 0;
    qint64 positionTexts = 0;

    qint64 chromosomeRows = 0;    // with a chromosome
    std::optional<qint64> labels; // chromosomes that differ, of a whole table

    // As many chromosomes as a column of marker names would make.
    bool haveManyLabels() const;

    // `negLog10` is that of p's own text.
    void countP(double p, bool isNegative, double negLog10);
    void countLog(double value);
    void countPair(double p, double negLog10OfP, double negLog10, qint64 line,
                   const QString& texts);
};

// p at most this far above 1 is 1, and a -log10 p as far below 0 is 0.
inline constexpr double largestP = 1.000001;

// True where p and its logarithm differ by more than 1 % and by more than 0.01.
bool disagree(double negLog10OfP, double negLog10);

// -log10 p of a logarithm of p.
double negLog10Of(double value, PScale scale);

// Refuses values that cannot be what the columns were chosen for, with what to say instead.
std::optional<Refusal> judge(const ValueCounts& counts, const Understanding& table);
