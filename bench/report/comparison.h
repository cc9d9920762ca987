#pragma once

#include "report/programs.h"
#include "report/sections.h"

// Any two programs that do the same job: a section of the report is a list of these.
struct Program {
    QString name;
    Run run;
    QStringList check = {};   // a command that fails where the program is not installed
    QString time = "seconds"; // that number of the run
};

struct Comparison {
    QString what;
    Program ours, other;
    QString timeBar;
    QString memoryBar = {}; // of our own "memory"; may be empty
};

// Runs each pair in turns on a file of so many lines, and prints a table. Skips, by name, what it
// is to be compared with where that is not installed.
QList<Verdict> compare(const Plan& plan, const QString& title, qint64 lines,
                       const QList<Comparison>& comparisons);
