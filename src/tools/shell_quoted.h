#pragma once

#include <QString>

// The word as a POSIX shell must be given it: as it is where that is safe, else in single quotes.
QString shellQuoted(const QString& word);
