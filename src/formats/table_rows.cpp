#include "table_rows.h"

#include <algorithm>
#include <utility>

namespace {

// Takes lines off the start of a text, as many as there are. Returns how many.
qint64 dropLines(std::string_view& text, qint64 count) {
    constexpr size_t chunk = 1024;
    qint64 dropped = 0;
    while (text.size() >= chunk) {
        const qint64 more = lineFeeds(text.substr(0, chunk));
        if (dropped + more >= count)
            break;
        dropped += more;
        text.remove_prefix(chunk);
    }
    for (; dropped < count && !text.empty(); ++dropped) {
        const size_t end = text.find('\n');
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return dropped;
}

} // namespace

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

TableRows::TableRows(QIODevice& device, TableFormat format, qsizetype bytesAtATime)
    : m_format(std::move(format)), m_blocks(device, bytesAtATime, TextBlocks::Unmarked::AsTheyAre) {
}

bool TableRows::next() {
    while (!m_lines.nextLine()) {
        m_linesBefore += static_cast<qint64>(m_lines.lineCount());
        const bool isMore = nextPiece();
        find(std::exchange(m_rest, {}));
        if (!isMore)
            return false;
    }
    split();
    return true;
}

bool TableRows::goTo(qint64 line, const QList<LinePlace>& places) {
    while (m_lines.nextLine())
        if (this->line() == line) {
            split();
            return true;
        }
    m_linesBefore += static_cast<qint64>(m_lines.lineCount());
    find({});
    skipTo(line, places);
    do {
        m_linesBefore += dropLines(m_rest, line - m_linesBefore - 1);
        if (!nextPiece())
            return false;
    } while (m_linesBefore < line - 1);
    const size_t end = m_rest.find('\n');
    const size_t size = end == std::string_view::npos ? m_rest.size() : end + 1;
    find(m_rest.substr(0, size));
    m_rest.remove_prefix(size);
    return next();
}

// Goes to the last known place up to the line, unless the text at hand goes on beyond it.
void TableRows::skipTo(qint64 line, const QList<LinePlace>& places) {
    const auto after =
        std::partition_point(places.begin(), places.end(),
                             [line](const LinePlace& each) { return each.linesBefore < line; });
    if (after == places.begin())
        return;
    if (m_blocks.bytesRead() == 0) // the first bytes tell how the text is read
        nextPiece();
    if (std::prev(after)->byte <= m_blocks.bytesRead())
        return;
    const LinePlace& place = *std::prev(after);
    m_blocks.skipTo(place.byte);
    m_rest = {};
    m_linesBefore = place.linesBefore;
}

// Goes to the next piece where nothing is left of this one. False after the last one.
bool TableRows::nextPiece() {
    if (m_rest.empty() && m_blocks.next())
        m_rest = m_blocks.piece();
    return !m_rest.empty();
}

void TableRows::find(std::string_view text) {
    const char delimiter = delimiterOf(m_format.separator);
    m_lines.find(text, delimiter);
    const auto has = [text](char c) { return text.find(c) != std::string_view::npos; };
    m_hasQuotes = m_format.quoted && has('"');
    m_hasSpaces = (delimiter != ' ' && has(' ')) || (delimiter != '\t' && has('\t'));
}

void TableRows::split() {
    m_isPlain = isPlainLine();
    if (!m_isPlain)
        splitLine(text(), m_format, m_fields, m_scratch);
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
