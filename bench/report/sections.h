#pragma once

#include "report/bars.h"

#include <QList>
#include <algorithm>

struct Plan {
    Bars bars;
    QList<qint64> sizes; // lines of the files to open, ascending
    int rounds = 5;

    qint64 upTo(qint64 lines) const { return std::min(sizes.constLast(), lines); }
};

// The sections of the report. Each measures, prints its tables and returns its verdicts.
QList<Verdict> reportOpenings(const Plan& plan);
QList<Verdict> reportRedraws(const Plan& plan);
QList<Verdict> reportOddFiles(const Plan& plan);
QList<Verdict> reportSteps(const Plan& plan);
QList<Verdict> reportOthers(const Plan& plan);
QList<Verdict> reportTools(const Plan& plan);

// Times nothing: reads, plots and saves every layout with the program's code and with the plain
// reference, and ends the process with status 1 where the results differ.
QList<Verdict> reportSameness(const Plan& plan);
