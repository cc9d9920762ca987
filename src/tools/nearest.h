#pragma once

#include <QByteArray>
#include <QList>

// The candidate that the fewest insertions, deletions and replacements of a character turn into
// `word`; empty where that takes more than a third of the word's characters, at least two.
QByteArray nearest(const QByteArray& word, const QList<QByteArray>& candidates);
