#pragma once

#include <QString>

// Tells how long opening a file takes up to each of its steps, so that the differences are what the
// steps cost: read, blocks, fields, lines, numbers, logarithm, scan, geometry, genome. The file is
// tab-separated, and at fault nowhere.
void timeReadingSteps(const QString& fileName);
