#pragma once

#include "number_text.h"
#include "points.h"

#include <QString>

class QIODevice;

// The file that a name given by the user stands for: the name itself with ".txt" at its end.
QString tableName(const QString& name);

// The image beside a table: the table's name up to its first dot, and ".png".
QString imageName(const QString& tableName);

// The first line of every table.
inline constexpr char tableTitles[] = "Chr\tPosition\tP\t-log10(P)";

// Writes a row's numbers at `at`: P, computed from the value, a tab and the value, with six
// significant digits. There must be room for rowNumbersRoom characters. Returns the end of the
// text.
inline constexpr int rowNumbersRoom = 2 * numberTextRoom + 1;
char* writeRowNumbers(double value, char* at);

// Writes the points as a tab-separated table with the columns Chr, Position, P and -log10(P), every
// row with the same label, P computed from the value, numbers with six significant digits. False at
// the first failure to write.
bool writePointTable(QIODevice& device, const Points& points, const QString& label);

// Writes the table to a file as replaceFile() does. False when it could not be written whole.
bool savePointTable(const QString& fileName, const Points& points, const QString& label);
