#pragma once

#include "points.h"

#include <QString>

class QIODevice;

// The file that a name given by the user stands for: the name itself with ".txt" at its end.
QString tableName(const QString& name);

// The image beside a table: the table's name up to its first dot, and ".png".
QString imageName(const QString& tableName);

// Writes the points as a tab-separated table with the columns Chr, Position, P and -log10(P), every
// row with the same label, P computed from the value, numbers with six significant digits. False at
// the first failure to write.
bool writePointTable(QIODevice& device, const Points& points, const QString& label);

// Writes the table to a file as replaceFile() does. False when it could not be written whole.
bool savePointTable(const QString& fileName, const Points& points, const QString& label);
