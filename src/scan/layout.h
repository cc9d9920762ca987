#pragma once

#include "fault.h"

#include <QString>
#include <functional>
#include <string_view>

// A column that is read.
struct Column {
    size_t index = 0; // counted from 0
    QString name;     // for messages: its title, or its number from 1 where there are no titles
};

// How the lines of an association file are to be read.
struct Layout {
    char delimiter = '\t';
    qint64 headerLines = 0; // lines before the first data line
    Column chromosome;
    Column position;
    Column pValue;

    // The fields that a data line must have.
    size_t columnsNeeded() const;
};

// Finds the layout from the start of a file: its first line and perhaps more whole lines, in UTF-8,
// followed by TextBlocks::padding bytes that may be read.
using LayoutRule = std::function<Result<Layout>(std::string_view head)>;

// The window's rule, which looks at the first line alone. It sets the delimiter (tab, space, comma,
// in that order). A field that is not a number makes it a header; the leftmost title that mentions
// "chr", "some" or "id", "pos", and "pval" or "p-val" (or is "P" or "p") names each column. Without
// a header the columns are chromosome, position, p-value.
// Faults: UnknownDelimiter, TooFewColumns, IncorrectColumns.
Result<Layout> windowLayout(std::string_view head);
