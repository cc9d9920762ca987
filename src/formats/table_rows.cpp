#include "table_rows.h"

#include <utility>

namespace {

constexpr qsizetype blockSize = 256 * 1024;

char delimiterOf(Separator separator) {
    switch (separator) {
    case Separator::Comma:
        return ',';
    case Separator::Semicolon:
        return ';';
    case Separator::Spaces:
    case Separator::WideSpaces:
        return ' ';
    default:
        return '\t';
    }
}

} // namespace

TableRows::TableRows(QIODevice& device, TableFormat format)
    : m_format(std::move(format)), m_blocks(device, blockSize, TextBlocks::Unmarked::AsTheyAre) {}

bool TableRows::next() {
    const char delimiter = delimiterOf(m_format.separator);
    while (!m_lines.nextLine()) {
        m_linesBefore += static_cast<qint64>(m_lines.lineCount());
        const bool isMore = m_blocks.next();
        const std::string_view piece = isMore ? m_blocks.piece() : std::string_view();
        m_lines.find(piece, delimiter);
        const auto has = [piece](char c) { return piece.find(c) != std::string_view::npos; };
        m_hasQuotes = m_format.quoted && has('"');
        m_hasSpaces = (delimiter != ' ' && has(' ')) || (delimiter != '\t' && has('\t'));
        if (!isMore)
            return false;
    }
    m_isPlain = isPlainLine();
    if (!m_isPlain)
        splitLine(text(), m_format, m_fields, m_scratch);
    return true;
}

// Where runs of spaces separate, a line without any is split the same way by single ones.
bool TableRows::isPlainLine() const {
    if (m_hasQuotes && text().find('"') != std::string_view::npos)
        return false;
    if (m_format.separator < Separator::Spaces)
        return true;
    if (m_format.separator != Separator::Spaces)
        return false;
    for (size_t i = 0; i < m_lines.fieldCount(); ++i)
        if (m_lines.field(i).empty())
            return false;
    return true;
}
