#include "table_format.h"

#include "characters.h"
#include "text_blocks.h"

namespace {

// Walks over a line field by field.
class FieldCutter {
public:
    FieldCutter(std::string_view line, const TableFormat& format, QByteArray& scratch)
        : m_line(line), m_format(format), m_scratch(scratch) {
        m_scratch.resize(0);
        // Views into it have to stay valid, and are padded like the line.
        m_scratch.reserve(qsizetype(line.size()) + TextBlocks::padding);
    }

    void cut(QList<std::string_view>& fields) {
        fields.clear();
        if (isRunSeparated())
            skipSpaces();
        while (m_at < m_line.size() || m_expectsField) {
            fields.append(nextField());
            skipSeparator();
        }
    }

private:
    bool isRunSeparated() const { return m_format.separator >= Separator::Spaces; }

    void skipSpaces() {
        while (m_at < m_line.size() && isSpace(m_line[m_at]))
            ++m_at;
        m_expectsField = m_at < m_line.size();
    }

    // The length of the separator at a place; 0 where there is none.
    size_t separatorAt(size_t at) const {
        switch (m_format.separator) {
        case Separator::Tab:
            return m_line[at] == '\t' ? 1 : 0;
        case Separator::Comma:
            return m_line[at] == ',' ? 1 : 0;
        case Separator::Semicolon:
            return m_line[at] == ';' ? 1 : 0;
        case Separator::Spaces:
            return m_line[at] == ' ' ? 1 : 0;
        case Separator::WideSpaces:
            return m_line.substr(at, 2) == "  " ? 2 : 0;
        case Separator::WhiteSpace:
            return isSpace(m_line[at]) ? 1 : 0;
        }
        return 0;
    }

    bool isEnd(size_t at) const { return at >= m_line.size() || separatorAt(at) > 0; }

    void skipSeparator() {
        m_expectsField = false;
        if (m_at >= m_line.size())
            return;
        m_at += separatorAt(m_at);
        if (isRunSeparated())
            skipSpaces();
        else
            m_expectsField = true;
    }

    std::string_view nextField() {
        const size_t start = m_at;
        while (m_format.quoted && !isEnd(m_at) && isSpace(m_line[m_at]))
            ++m_at;
        if (m_format.quoted && m_at < m_line.size() && m_line[m_at] == '"')
            if (const size_t end = closingQuote(); end != std::string_view::npos)
                return quotedField(end);
        m_at = start;
        while (!isEnd(m_at))
            ++m_at;
        return trimmed(m_line.substr(start, m_at - start));
    }

    // The quote that ends the field: a separator or the line's end follows it. A tab stands in no
    // field of a table of tabs, so that two fields with a lone quote each stay two.
    size_t closingQuote() const {
        for (size_t at = m_at + 1; at < m_line.size(); ++at) {
            if (m_line[at] == '\t' && m_format.separator == Separator::Tab)
                return std::string_view::npos;
            if (m_line[at] != '"')
                continue;
            if (m_line.substr(at, 2) == "\"\"" && !isEndAfterSpaces(at + 1))
                ++at;
            else if (isEndAfterSpaces(at + 1))
                return at;
        }
        return std::string_view::npos;
    }

    bool isEndAfterSpaces(size_t at) const {
        while (!isEnd(at) && isSpace(m_line[at]))
            ++at;
        return isEnd(at);
    }

    std::string_view quotedField(size_t end) {
        const std::string_view text = m_line.substr(m_at + 1, end - m_at - 1);
        m_at = end + 1;
        while (!isEnd(m_at))
            ++m_at;
        return trimmed(text.find("\"\"") == std::string_view::npos ? text : withSingleQuotes(text));
    }

    std::string_view withSingleQuotes(std::string_view text) {
        const qsizetype start = m_scratch.size();
        for (size_t at = 0; at < text.size(); ++at) {
            m_scratch += text[at];
            if (text.substr(at, 2) == "\"\"")
                ++at;
        }
        return {m_scratch.constData() + start, size_t(m_scratch.size() - start)};
    }

    static std::string_view trimmed(std::string_view text) {
        while (!text.empty() && isSpace(text.front()))
            text.remove_prefix(1);
        while (!text.empty() && isSpace(text.back()))
            text.remove_suffix(1);
        return text;
    }

    std::string_view m_line;
    const TableFormat& m_format;
    QByteArray& m_scratch;
    size_t m_at = 0;
    bool m_expectsField = true; // also where the line ends with a separator
};

} // namespace

void splitLine(std::string_view line, const TableFormat& format, QList<std::string_view>& fields,
               QByteArray& scratch) {
    FieldCutter(line, format, scratch).cut(fields);
}
