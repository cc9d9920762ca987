#include "head_table.h"

#include "joined_id.h"
#include "p_value.h"
#include "titles.h"

#include <algorithm>

bool HeadLine::isEmpty() const {
    return text.find_first_not_of(" \t") == std::string_view::npos;
}

QList<HeadLine> linesOf(std::string_view text) {
    if (text.substr(0, 3) == "\xef\xbb\xbf")
        text.remove_prefix(3);
    QList<HeadLine> lines;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        lines.append({text.substr(0, end), lines.size() + 1});
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

int HeadTable::columnCount() const {
    if (!titles().isEmpty() || m_body.isEmpty())
        return int(titles().size());
    return int(fields(m_body.first()).size());
}

QList<QByteArray> HeadTable::fields(const HeadLine& line) const {
    QList<std::string_view> views;
    QByteArray scratch;
    splitLine(line.text, m_format, views, scratch);
    QList<QByteArray> fields;
    fields.reserve(views.size());
    for (const std::string_view view : views)
        fields += bytesOf(view);
    return fields;
}

void HeadTable::split() const {
    m_fields.clear();
    m_unquoted.clear();
    QList<std::string_view> views;
    QByteArray scratch;
    for (const HeadLine& line : m_body) {
        splitLine(line.text, m_format, views, scratch);
        m_starts.push_back(m_fields.size());
        m_fields.insert(m_fields.end(), views.begin(), views.end());
        if (!scratch.isEmpty())
            m_unquoted.push_back(std::exchange(scratch, {}));
    }
    m_starts.push_back(m_fields.size());
}

std::span<const std::string_view> HeadTable::row(qsizetype i) const {
    if (m_starts.empty())
        split();
    const size_t start = m_starts[size_t(i)];
    return {m_fields.data() + start, m_starts[size_t(i) + 1] - start};
}

void HeadTable::dropLinesLongerThan(size_t fields) {
    QList<HeadLine> kept;
    for (qsizetype i = 0; i < m_body.size(); ++i) {
        const auto texts = row(i);
        const auto beyond = texts.subspan(std::min(fields, texts.size()));
        if (std::all_of(beyond.begin(), beyond.end(), [](auto text) { return text.empty(); }))
            kept.append(m_body[i]);
    }
    if (kept.size() == m_body.size())
        return;
    m_body = kept;
    m_starts.clear();
}

QList<QByteArray> HeadTable::column(int column, qsizetype limit) const {
    QList<QByteArray> texts;
    const qsizetype count = std::min(limit, m_body.size());
    texts.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        const auto fields = row(i);
        texts += size_t(column) < fields.size() ? bytesOf(fields[size_t(column)]) : QByteArray();
    }
    return texts;
}

QList<QByteArray> HeadTable::values(int column, qsizetype limit) const {
    QList<QByteArray> texts = this->column(column, limit);
    texts.removeIf([](const QByteArray& text) { return isMissing(viewOf(text)); });
    return texts;
}

bool areJoinedIds(const QList<QByteArray>& values, int percent) {
    const auto joined = std::count_if(values.begin(), values.end(), [](const QByteArray& text) {
        return readJoinedId(viewOf(text)).has_value();
    });
    return !values.isEmpty() && joined * 100 >= values.size() * percent;
}
