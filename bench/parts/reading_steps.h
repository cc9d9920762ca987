#pragma once

#include <QString>

// Prints the time of each step of opening a file: read, blocks, fields, lines, numbers, logarithm,
// scan, geometry, genome. From blocks to numbers each time includes the step before it, and scan
// includes numbers and logarithm. The file has to be tab-separated and without faults.
void timeReadingSteps(const QString& fileName);
