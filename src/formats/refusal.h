#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// Why a table is not prepared.
enum class RefusalCode {
    ForeignFile, // a kind of file that is no table: zip, PDF, Excel ...
    Unreadable,  // cannot be opened or read
    Damaged,     // a compressed stream that is cut short or corrupt
    NotATable,   // no line that could be a header, or no rows
    NoChromosome,
    NoPosition,
    NoPValue,
    SeveralPValues, // no column is better than the others
    SeveralBuilds,  // positions of two genome builds
    ZeroBased,      // BED-like positions
    GeneticMap,     // positions that are not whole numbers
    LooksLikeNames, // the chromosome column holds marker names
    LooksLikeNegLog10,
    LooksLikeLog,  // all values at or below 0
    MixedSigns,    // a log column with both signs
    PairDisagrees, // p and its logarithm do not agree
    SeveralTests,
    SeveralTraits,
    OutOfRange,       // more than 1 in 100 p-values outside [0, 1]
    ZeroP,            // a p of 0, where the user asked to fail
    UnknownColumn,    // an option names a column that is not there
    DifferentColumns, // several inputs with different titles
    SeveralSamples,
    NotPositions, // the table of positions does not say chromosome, position and name
    Unwritable,   // the output, or a temporary file
};

struct Refusal {
    RefusalCode code;
    QString message;              // one or more sentences: what is wrong, and what to do
    QList<QByteArray> candidates; // raw titles to choose from
    QList<QByteArray> options;    // what to add to the command line, e.g. "--p P_EUR"
    qint64 line = 0;              // of the unpacked text, from 1; 0 where no line is at fault
    qsizetype input = 0;          // the file of that line
};
