#pragma once

#include "report/samples.h"

#include <QStringList>

// A table in Markdown on standard output, row by row as they come.
class Table {
public:
    explicit Table(const QStringList& titles);
    static void addRow(const QStringList& cells);
};

// The cell for a bar that is met or not. What is not met is counted.
QString verdict(bool isMet);
int barsMissed();

QString times(double ratio); // "7.1 x"
