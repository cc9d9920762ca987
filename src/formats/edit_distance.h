#pragma once

#include <QByteArray>

// The fewest insertions, deletions and replacements of a character that turn one text into the
// other.
qsizetype editDistance(const QByteArray& a, const QByteArray& b);
