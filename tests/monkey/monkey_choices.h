#pragma once

#include <QString>

class Random;

// What the monkey may type and choose.
namespace choices {

QString dataFile(Random& random);  // one in the working folder
QString tableName(Random& random); // for a table that is saved; few of them can't be written
QString rangeText(Random& random); // for the range fields

} // namespace choices
