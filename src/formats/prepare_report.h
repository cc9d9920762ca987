#pragma once

#include "table_format.h"

#include <QByteArray>
#include <QLatin1String>
#include <QList>
#include <QString>
#include <array>

// Why a row of a table is not written.
enum class DropReason {
    PMissing,
    PZero,
    PNotANumber,
    POutOfRange,
    PositionMissing,
    PositionNotWhole,
    PositionNotPositive,
    PositionTooLarge,
    ChromosomeMissing,
    WrongTest,
    ShortLine,
    JoinedIdUnreadable,
    NoPositionInTable,
    RepeatedHeader,
    Comment,
    Empty,
    SmallChromosome,
};
inline constexpr int dropReasonCount = 17;

// "p-missing" and so on: the name by which reports and files know a reason.
QLatin1String nameOf(DropReason reason);

// A line of an input; both from 0 and 1: the first input is 0, its first line is 1.
struct InputLine {
    int input = 0;
    qint64 line = 0;
};

constexpr qsizetype reportedLines = 5; // of each reason

struct Dropped {
    qint64 count = 0;
    QList<InputLine> firstLines; // reportedLines at most
};

struct ChromosomeCount {
    QByteArray name; // as written
    qint64 markers = 0;
};

// What was done to a table. Each row is counted once: rows = written + all that were dropped.
struct PrepareReport {
    Understanding table; // of the first input
    qint64 rows = 0;     // lines after the headers
    qint64 written = 0;
    std::array<Dropped, dropReasonCount> dropped;
    QList<ChromosomeCount> chromosomes; // in the order written
    bool wasInOrder = true;
    qint64 bounds = 0;        // p-values such as <2e-16, written as their bound
    qint64 roundedToOne = 0;  // p-values just above 1
    qint64 belowSmallest = 0; // p-values that no double holds
    QByteArray strongest;     // the largest -log10 p of these
    InputLine strongestLine;
    qint64 zeroByLog = 0;      // p of 0 taken from the paired logarithm
    qint64 zeroBySmallest = 0; // p of 0 written as the smallest p above 0
    QByteArray smallestP;      // that p
    qint64 otherSpellings = 0; // rows whose chromosome was spelled otherwise before
    QByteArray keptTest;       // the test whose rows were kept, where there were several
    QList<QString> remarks;
};
