#pragma once

#include "plain_header.h"
#include "plain_p.h"

#include <QHash>

namespace plain {

struct Place {
    QString chromosome;
    QString position;
};

// A line of a table, and what is known of it.
struct Row {
    int input = 0;
    qint64 line = 0; // from 1
    QString text;
    QStringList fields;
    QString lineFault; // each fault is a reason to drop the row, or empty
    QString filterFault;
    QString pFault;
    QString placeFault;
    bool isSmall = false; // its chromosome has too few markers
    QString chromosome;
    qint64 position = 0;
    PText p;

    // The first reason to drop it; empty for none.
    QString reason() const;
    bool isWritten() const { return reason().isEmpty(); }
    QString field(int column) const { return fields.value(column); }
};

// Reads the fields of rows by what is known of their table.
class RowReader {
public:
    RowReader(const Table& table, const PrepareOptions& options);

    void findLineFault(Row& row, const QString& header) const;
    void findFilterFault(Row& row, const QString& keptTest) const;
    void readP(Row& row) const;
    void readPlace(Row& row) const;

    QString pText(const Row& row) const;   // with a decimal point
    QString logText(const Row& row) const; // likewise
    Decimal positionNumber(const Row& row) const;

private:
    qsizetype fieldsNeeded() const;
    bool hasOddFields(const Row& row) const;
    bool isByName() const { return m_table.columns.joined < 0 && m_table.columns.position < 0; }
    QString number(const Row& row, int column) const;
    QString readPosition(const QString& text, qint64& position) const;

    const Table& m_table;
    const PrepareOptions& m_options;
    QHash<QString, Place> m_places; // by marker name, from another table
};

// The rows of a table, from the line after its header on, with the faults of their lines.
QList<Row> rowsOf(const QStringList& lines, const Table& table, const PrepareOptions& options,
                  int input);

} // namespace plain
