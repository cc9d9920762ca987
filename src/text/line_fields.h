#pragma once

#include <QList>
#include <cstddef>
#include <string_view>

// Splits a piece of text into lines and fields, then steps through its lines.
class LineFields {
public:
    // Splits a new piece and goes before its first line. Each line ends with a line feed, except
    // perhaps the last. TextBlocks::padding bytes after the text must be readable. Only pointers
    // into the text are kept: it must outlive the fields.
    void find(std::string_view text, char delimiter);

    // Goes to the next line. False after the last one.
    bool nextLine() {
        if (m_line == m_lineCount)
            return false;
        m_lineStart = m_lineEnd;
        m_lineEnd = m_lineEnds.constData()[m_line++];
        return true;
    }

    // Goes back before the first line.
    void rewind() { m_line = m_lineStart = m_lineEnd = 0; }

    // The lines in the piece, and the current line's number from 1; 0 before the first line.
    size_t lineCount() const { return m_lineCount; }
    size_t lineInPiece() const { return m_line; }

    // The current line's fields. An empty line has one field, which is empty.
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
    // Both lists keep the size of the largest piece so far; only their first entries are in use.
    QList<size_t> m_fieldEnds; // [0] is -1, then the offset of the byte that ends each field
    QList<size_t> m_lineEnds;  // for each line, the number of fields up to its end
    size_t m_lineCount = 0;
    size_t m_line = 0;      // lines passed, including the current one
    size_t m_lineStart = 0; // the number of fields before the current line
    size_t m_lineEnd = 0;   // and up to its end
};
