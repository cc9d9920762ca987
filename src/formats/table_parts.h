#pragma once

#include "refusal.h"
#include "table_rows.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <optional>
#include <utility>
#include <vector>

// Watches columns whose values may part a table into several scans, such as the test or the trait
// that a row is of: they do where a marker occurs under more than one of them.
//
// In a table in order the rows of one marker follow each other. In any other, the rows of one scan
// may follow those of another: there it takes a thorough look, which remembers every marker.
class TableParts {
public:
    enum class Kind { Test, Trait };

    // `nameColumn` holds the markers' names; -1 for none.
    TableParts(int nameColumn, bool isThorough)
        : m_nameColumn(nameColumn), m_isThorough(isThorough) {}
    void watch(int column, Kind kind) { m_columns.append({column, kind, {}, false, false, {}}); }

    // Takes a row at its place.
    void note(const TableRows& rows, quint32 chromosome, int position) {
        if (!m_columns.isEmpty())
            noteValues(rows, chromosome, position);
    }

    // The additive test, where it is one among several; its rows are then those to keep.
    bool hasAdditiveTest() const { return m_hasAdditiveTest; }

    // True where only a thorough look at a table out of order can tell.
    bool needThoroughLook() const;

    // Refuses a table in which markers occur under several values, naming these: those of most rows
    // first, without those of a single row where others have more.
    std::optional<Refusal> judge(const QList<QByteArray>& titles) const;

private:
    struct Column {
        int column;
        Kind kind;
        QHash<QByteArray, qint64> rows;                // by value; of some, if there are many
        bool hasAdditive;                              // among the values
        bool hasRepeats;                               // a marker occurs under more than one value
        std::vector<std::pair<quint64, quint64>> seen; // hashes of markers and of values
    };
    void noteThoroughly(quint32 chromosome, int position, const QByteArray& name,
                        const QByteArray& value, Column& column) const;
    static bool parts(const Column& column);
    static QList<QByteArray> choices(const Column& column);
    void noteValues(const TableRows& rows, quint32 chromosome, int position);

    const int m_nameColumn;
    const bool m_isThorough;
    QList<Column> m_columns;
    bool m_hasAdditiveTest = false;
    quint32 m_chromosome = 0;
    int m_position = 0;
    QHash<std::pair<int, QByteArray>, QByteArray> m_here; // the first value by column and name
};
