#pragma once

#include <QList>
#include <QtGlobal>

// The parts of the report. Each measures its programs in turns, so many rounds, and prints a table.

struct Extent {
    QList<qint64> sizes; // lines of the files to open, in ascending order
    int rounds = 5;
};

void reportOpenings(const Extent& extent);
void reportRedraws(const Extent& extent);
void reportOddFiles(const Extent& extent);
void reportSteps(const Extent& extent);
void reportOthers(const Extent& extent);

// Whether the quick and the plain way give the same in all layouts.
bool reportSameness(const Extent& extent);
