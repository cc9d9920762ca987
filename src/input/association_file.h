#pragma once

#include "input/fault.h"

#include <QString>
#include <QStringList>
#include <QTextStream>
#include <optional>

class QIODevice;

// The texts of one data line's three used columns.
struct Record {
    QString chromosome;
    QString position;
    QString pValue;
};

// A delimited text file of association results, read a line at a time from its start.
//
// The first line decides all: a tab in it, else a blank, else a comma is the delimiter; a field in
// it that is no number makes it a header, in which the columns are found by their titles. Without a
// header the columns are chromosome, position, p-value. Fields are neither trimmed nor unquoted, and
// empty lines do not count. Text is in the system's encoding unless a byte-order mark says otherwise.
class AssociationFile {
public:
    explicit AssociationFile(QIODevice& file);

    // Opens the file and reads as far as the first data line. Called once, before all else.
    std::optional<Fault> open();

    // Reads the next line that is not empty. False at the end and at a fault, which fault() tells.
    bool next(Record& record);
    std::optional<Fault> fault() const { return m_fault; }

private:
    struct Columns { // from 0; -1 where a title was not found
        qsizetype chromosome = 0;
        qsizetype position = 1;
        qsizetype pValue = 2;
    };
    static Columns findColumns(const QStringList& titles);

    QIODevice& m_file;
    QTextStream m_text;
    QChar m_delimiter;
    Columns m_columns;
    std::optional<Fault> m_fault;
};
