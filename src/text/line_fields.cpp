#include "line_fields.h"

#include "field_ends.h"

#include <algorithm>

// Works in stretches so that the lists grow with the fields found, not with the bytes searched: a
// line may have gigabytes.
void LineFields::find(std::string_view text, char delimiter) {
    constexpr auto beforeText = static_cast<size_t>(-1);
    constexpr size_t stretch = 64 * fieldBlockSize;
    m_text = text.data();
    rewind();
    FieldEnds ends{};
    roomFor(1, m_fieldEnds)[0] = beforeText;
    for (size_t from = 0; from < text.size(); from += stretch) {
        const size_t to = std::min(from + stretch, text.size());
        ends.fields = roomFor(1 + ends.fieldCount + stretch + fieldBlockSize, m_fieldEnds) + 1;
        ends.lines = roomFor(ends.lineCount + stretch + fieldBlockSize, m_lineEnds);
        findFieldEnds(text.data(), from, to, delimiter, ends);
    }
    if (!text.empty() && text.back() != '\n') {
        m_fieldEnds.data()[1 + ends.fieldCount++] = text.size();
        m_lineEnds.data()[ends.lineCount++] = ends.fieldCount;
    }
    m_lineCount = ends.lineCount;
}

size_t* LineFields::roomFor(size_t count, QList<size_t>& list) {
    const auto size = static_cast<qsizetype>(count);
    if (list.size() < size)
        list.resize(size);
    return list.data();
}
