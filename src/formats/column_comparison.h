#pragma once

#include "layout.h"
#include "table_format.h"

#include <QString>
#include <string_view>

// A column that the window takes, beside the one that is right.
struct ComparedColumn {
    int number = 0; // the window's, from 1
    QString title;  // its title, or its number where there are none
    int rightNumber = 0;
    QString rightTitle;
    QString why; // the right one is right
    bool isRight = true;
    qint64 line = 0;    // where the two differ; 0 where their titles say so
    QString windowText; // on that line
    QString rightText;
};

struct ComparedColumns {
    ComparedColumn chromosome;
    ComparedColumn position;
    ComparedColumn p;
    bool isLog = false;     // the window's p-values are logarithms of p
    bool isNames = false;   // the window's chromosomes are names of markers
    QList<QString> tests;   // that rows are of, where a column says so; a few at most
    bool isQuoted = false;  // so are fields that the window takes
    bool isAligned = false; // runs of spaces part the fields: the window sees empty ones
};

// Compares the columns that the window takes with the right ones. Where both part fields alike the
// columns' places decide, else the texts of the first lines. `head` is whole lines from the start
// of the file, in UTF-8 without carriage returns.
ComparedColumns compareColumns(const Layout& window, const Understanding& right,
                               std::string_view head);
