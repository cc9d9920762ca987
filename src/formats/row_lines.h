#pragma once

#include <QtGlobal>
#include <cstddef>
#include <vector>

// The lines of a file that rows came from. Takes next to no memory where successive rows came from
// successive lines.
class RowLines {
public:
    // The line of the next row, from 1.
    void append(qint64 line) {
        if (line != m_nextLine)
            m_runs.push_back({m_size, line});
        m_nextLine = line + 1;
        ++m_size;
    }

    size_t size() const { return m_size; }
    qint64 operator[](size_t row) const;
    qint64 smallest() const; // there is at least one row

    std::vector<qint64> ofRows(size_t begin, size_t end) const;
    std::vector<qint64> ascending() const; // of all rows

    bool operator==(const RowLines&) const = default;

private:
    struct Run { // of rows on successive lines
        size_t row = 0;
        qint64 line = 0;

        bool operator==(const Run&) const = default;
    };

    std::vector<Run>::const_iterator runOf(size_t row) const;

    std::vector<Run> m_runs;
    size_t m_size = 0;
    qint64 m_nextLine = 0;
};
