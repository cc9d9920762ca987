#pragma once

#include "finding.h"
#include "layout.h"

#include <QByteArray>
#include <QList>
#include <optional>

class QIODevice;

// What the window knows of the lines with one label.
struct ChromosomeFacts {
    QByteArray label;      // UTF-8
    qint64 markers = 0;    // drawn in the genome view
    qint64 loaded = 0;     // drawn when it is picked: those of its first stretch of lines
    qint64 firstLine = 0;  // of its first stretch
    int firstPosition = 0; // base pairs, of the markers loaded, in file order
    int lastPosition = 0;
};

// What the window makes of a file, and all that it meets on the way, whether or not it ends there.
struct WindowReading {
    std::optional<Layout> layout;
    std::optional<Fault> refusal;       // why there is no layout
    std::optional<Fault> unreadable;    // the file could not be read to its end
    qint64 rows = 0;                    // data lines that are not empty
    qint64 kept = 0;                    // markers
    qint64 leftOut = 0;                 // p of NA or 0
    double smallestP = 1.0;             // above 0
    QList<ChromosomeFacts> chromosomes; // in file order, at most chromosomesKept
    qint64 stretches = 0;               // of lines with one label
    bool isOneChromosome = true;        // the window then opens it at once
    QList<Finding> findings;            // by line; those of kinds that depend on lines alone

    static constexpr qsizetype chromosomesKept = 100'000;
};

// Reads the file once, by the window's reader. The device must be closed. Memory does not grow with
// the file, but for its labels.
WindowReading readAsWindow(QIODevice& device);
