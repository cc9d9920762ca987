#pragma once

#include "block_size.h"
#include "line_fields.h"
#include "table_format.h"
#include "text_blocks.h"

#include <QByteArray>
#include <QList>
#include <string_view>

class QIODevice;

// The character that parts fields; a space for runs of them.
char delimiterOf(Separator separator);

// The start of a line in a text that is read as it stands.
struct LinePlace {
    qint64 byte = 0;
    qint64 linesBefore = 0;
};

// The lines of a table, one after the other from its first, and their fields without quotes and the
// spaces around them. Bytes that are no UTF-8 are kept as they are; carriage returns are dropped.
// Views are valid until the next line is read, and followed by TextBlocks::padding readable bytes.
class TableRows {
public:
    // The device is open for reading, at its start, and outlives this.
    TableRows(QIODevice& device, TableFormat format, qsizetype bytesAtATime = tableBlockSize);

    // Goes to the next line. False after the last one, and where the device could not be read.
    bool next();

    // Goes to a later line by its number. Those before it are not split, and those between known
    // places, which ascend, not even read. False where there is no such line, as above.
    bool goTo(qint64 line, const QList<LinePlace>& places = {});
    bool failed() const { return m_blocks.failed(); }

    // Goes to the next line unless it has to be read first.
    bool nextInPiece() { return m_lines.nextLine(); }

    // Whether the text around here has single separators and neither quotes nor other spaces.
    bool isPlainPiece() const {
        return !m_hasQuotes && !m_hasSpaces && m_format.separator < Separator::Spaces;
    }

    qint64 line() const { return m_linesBefore + static_cast<qint64>(m_lines.lineInPiece()); }
    std::string_view text() const { return m_lines.text(); }

    // Whether a field of this line may hold a tab.
    bool mayHoldTabs() const { return !m_isPlain || m_format.separator != Separator::Tab; }

    size_t fieldCount() const {
        return m_isPlain ? m_lines.fieldCount() : static_cast<size_t>(m_fields.size());
    }
    std::string_view field(size_t i) const {
        if (!m_isPlain)
            return m_fields[static_cast<qsizetype>(i)];
        return m_hasSpaces ? trimmed(m_lines.field(i)) : m_lines.field(i);
    }

    // The same of a column that a line may be too short for: its field is then empty.
    std::string_view fieldOrNone(int column) const {
        const auto i = static_cast<size_t>(column);
        return i < fieldCount() ? field(i) : std::string_view();
    }

private:
    static std::string_view trimmed(std::string_view text) {
        const auto isSpace = [](char c) { return c == ' ' || c == '\t'; };
        while (!text.empty() && isSpace(text.front()))
            text.remove_prefix(1);
        while (!text.empty() && isSpace(text.back()))
            text.remove_suffix(1);
        return text;
    }
    bool isPlainLine() const;
    bool nextPiece();
    void skipTo(qint64 line, const QList<LinePlace>& places);
    void find(std::string_view text);
    void split();

    const TableFormat m_format;
    TextBlocks m_blocks;
    LineFields m_lines;
    std::string_view m_rest;  // of the piece, after the lines that were found
    qint64 m_linesBefore = 0; // before the lines that were found
    bool m_hasQuotes = false; // some of these lines, in a table with quoted fields
    bool m_hasSpaces = false; // some field of these lines
    bool m_isPlain = true;    // this line is split by single separators, without quotes
    QList<std::string_view> m_fields;
    QByteArray m_scratch;
};
