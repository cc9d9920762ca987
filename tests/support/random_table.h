#pragma once

#include "prepare_options.h"

#include <QByteArray>
#include <QList>

class Random;

// A small result table as association tools write them, or nearly: any layout, titles that say
// what a column holds and titles that only seem to, odd numbers, missing values, several spellings
// of a chromosome, comments, short lines, headers that come back. Most of them can be prepared.
struct RandomTable {
    QList<QByteArray> files; // with the same columns
    QByteArray positions;    // the file for --positions; empty for none
    PrepareOptions options;
};

RandomTable randomTable(Random& random);
