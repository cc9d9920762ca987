#pragma once

#include "refusal.h"
#include "table_rows.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <optional>

// Watches columns whose values may part a table into several scans, such as the test or the trait
// that a row is of: they do where a marker occurs under more than one of them.
class TableParts {
public:
    enum class Kind { Test, Trait };

    // `nameColumn` holds the markers' names; -1 for none.
    explicit TableParts(int nameColumn) : m_nameColumn(nameColumn) {}
    void watch(int column, Kind kind) { m_columns.append({column, kind, {}, {}, false, false}); }

    // Takes a row at its place. Rows of one marker that follow each other are compared; so are all
    // rows with those of the first markers, since a table may hold one scan after the other.
    void note(const TableRows& rows, quint32 chromosome, int position) {
        if (!m_columns.isEmpty())
            noteValues(rows, chromosome, position);
    }

    // The additive test, where it is one among several; its rows are then those to keep.
    bool hasAdditiveTest() const { return m_hasAdditiveTest; }

    // Refuses a table in which markers occur under several values, naming these.
    std::optional<Refusal> judge(const QList<QByteArray>& titles) const;

private:
    struct Column {
        int column;
        Kind kind;
        QByteArray first;        // the value of the first row
        QSet<QByteArray> values; // some of them, if there are many
        bool hasAdditive;        // among the values
        bool hasRepeats;         // a marker occurs under more than one value
    };
    using Markers = QHash<QByteArray, QByteArray>; // the first value by column and marker

    void noteValues(const TableRows& rows, quint32 chromosome, int position);
    void noteValue(Column& column, const QByteArray& value, const QByteArray& marker);

    const int m_nameColumn;
    QList<Column> m_columns;
    bool m_hasAdditiveTest = false;
    quint32 m_chromosome = 0;
    int m_position = 0;
    Markers m_here;  // at the place of the last row
    Markers m_first; // of the table's first markers
};
