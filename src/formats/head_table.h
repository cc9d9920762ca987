#pragma once

#include "table_format.h"

#include <QByteArray>
#include <QList>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

struct HeadLine {
    std::string_view text;
    qint64 number = 0; // from 1
    bool isEmpty() const;
    bool isComment() const { return text.substr(0, 1) == "#"; }
};

// The lines of a text; a byte-order mark before the first one is left out.
QList<HeadLine> linesOf(std::string_view text);

// The first lines of a table, as a layout splits them.
class HeadTable {
public:
    // `body` has neither empty lines nor comments.
    HeadTable(TableFormat format, QList<HeadLine> body)
        : m_format(std::move(format)), m_body(std::move(body)) {}

    const TableFormat& format() const { return m_format; }
    TableFormat& format() {
        m_starts.clear();
        return m_format;
    }
    const QList<QByteArray>& titles() const { return m_format.titles; }
    const QList<HeadLine>& body() const { return m_body; }
    int columnCount() const; // by the titles; without titles, by the first line

    QList<QByteArray> fields(const HeadLine& line) const;

    // The fields of line i of the body.
    std::span<const std::string_view> row(qsizetype i) const;

    // Leaves out the lines that have a text beyond so many fields.
    void dropLinesLongerThan(size_t fields);

    // The column's texts in the first `limit` lines; empty where a line is too short.
    QList<QByteArray> column(int column, qsizetype limit) const;

    // The same without missing values.
    QList<QByteArray> values(int column, qsizetype limit) const;

private:
    void split() const;

    TableFormat m_format;
    QList<HeadLine> m_body;
    // All fields of the body, split once; rebuilt when the format may have changed.
    mutable std::vector<std::string_view> m_fields;
    mutable std::vector<size_t> m_starts; // of each line's fields, and their end; empty until split
    mutable std::vector<QByteArray> m_unquoted; // what some of the views point into
};

// True where at least `percent` of the values read as a joined id; false without any values.
bool areJoinedIds(const QList<QByteArray>& values, int percent);
