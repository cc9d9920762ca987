#pragma once

#include <QList>
#include <QString>

// What stands in the way of opening a file in the window and seeing it rightly.
enum class FindingCode {
    // The window ends at the line.
    PNotANumber,
    PTooSmall, // for a double: the window takes its text for no number
    PositionNotWhole,
    PositionTooLarge,
    ShortLine,
    // The window ends at the whole file.
    NoDelimiter,
    TooFewColumns,
    MissingTitles,
    TooFewMarkers,
    PathTooLong,
    ForeignFile,
    Packed,
    LoneReturns,
    // The window opens the file and shows something else than it holds.
    WrongChromosome,
    WrongPosition,
    WrongP,
    LogAsP,
    NamesAsChromosomes,
    // The window opens the file, but ...
    ColumnsInDoubt,
    PZero,
    PTiny,
    PNotFinite,
    POutOfRange,
    PositionNotPositive,
    ChromosomeReturns,
    PositionsUnsorted,
    FewMarkers,
    EqualPositions,
    SeveralSpellings,
    SeveralTests,
    CommentLines,
    Quotes,
    CommaAndSpace,
    AlignedColumns,
    FileName,
    PathFull,
};

struct Place {
    qint64 line = 0; // from 1, header included; 0 for the whole file
    QString column = {};
    QString text = {};
};

struct Finding {
    static constexpr qsizetype placesKept = 5;

    FindingCode code;
    qint64 count = 0;
    QList<Place> first; // at most placesKept of them
    qint64 lastLine = 0;

    void add(const Place& place) {
        addUnseen(place.line);
        if (first.size() < placesKept)
            first.append(place);
    }

    // One whose place need not be kept.
    void addUnseen(qint64 line) {
        ++count;
        lastLine = line;
    }
};
