#pragma once

#include <QList>
#include <cstddef>
#include <string_view>

// Finds where the fields of all lines of a text end, in one pass over its bytes.
class LineFields {
public:
    // The text holds whole lines, each ended by a line feed but perhaps the last, and is followed
    // by TextBlocks::padding bytes that may be read. It has to stay where it is until the last
    // field is taken.
    void find(std::string_view text, char delimiter);

    // Goes on to the next line. False behind the last one.
    bool nextLine() {
        if (m_line == m_lineCount)
            return false;
        m_lineStart = m_lineEnd;
        m_lineEnd = m_lineEnds.constData()[m_line++];
        return true;
    }

    // Goes back to before the first line.
    void rewind() { m_line = m_lineStart = m_lineEnd = 0; }

    // How many lines the text has, and how many nextLine() has gone to.
    size_t lineCount() const { return m_lineCount; }
    size_t line() const { return m_line; }

    // Of the line that nextLine() came to: an empty one has one field, which is empty.
    size_t fieldCount() const { return m_lineEnd - m_lineStart; }
    bool isEmptyLine() const { return fieldCount() == 1 && field(0).empty(); }

    std::string_view field(size_t i) const {
        const size_t* const end = m_fieldEnds.constData() + m_lineStart + i + 1;
        const size_t start = end[-1] + 1;
        return {m_text + start, *end - start};
    }

    // The whole line, without its line feed.
    std::string_view text() const {
        const size_t start = m_fieldEnds.constData()[m_lineStart] + 1;
        return {m_text + start, m_fieldEnds.constData()[m_lineEnd] - start};
    }

private:
    static size_t* roomFor(size_t count, QList<size_t>& list);

    const char* m_text = nullptr;
    // Offset of the delimiter or line feed behind each field, as if there were one before the text
    // too: all the others stand one place late.
    QList<size_t> m_fieldEnds;
    QList<size_t> m_lineEnds; // for each line, the number of fields up to its end
    size_t m_lineCount = 0;   // both lists are longer than what counts in them
    size_t m_line = 0;        // the next line
    size_t m_lineStart = 0;   // the number of fields before this line, and up to its end
    size_t m_lineEnd = 0;
};
