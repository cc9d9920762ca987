#include "input/line_fields.h"

#include <bit>

void LineFields::find(std::string_view text, char delimiter) {
    m_text = text;
    m_line = m_lineStart = m_lineEnd = 0;
    markBytes(text, delimiter, m_marks);
    size_t fields = 0, lines = 0;
    for (const ByteMarks& marks : m_marks) {
        fields += static_cast<size_t>(std::popcount(marks.fieldEnds));
        lines += static_cast<size_t>(std::popcount(marks.lineEnds));
    }
    m_fieldEnds.resize(fields);
    m_lineEnds.resize(lines);
    listMarks();
    if (!text.empty() && text.back() != '\n') {
        m_fieldEnds.push_back(text.size());
        m_lineEnds.push_back(m_fieldEnds.size());
    }
}

void LineFields::listMarks() {
    size_t* fieldEnd = m_fieldEnds.data();
    size_t* lineEnd = m_lineEnds.data();
    size_t start = 0;
    for (const ByteMarks& marks : m_marks) {
        const auto fieldsBefore = static_cast<size_t>(fieldEnd - m_fieldEnds.data());
        for (uint64_t rest = marks.lineEnds; rest != 0; rest &= rest - 1) {
            const uint64_t upToLineEnd = rest ^ (rest - 1);
            *lineEnd++ =
                fieldsBefore + static_cast<size_t>(std::popcount(marks.fieldEnds & upToLineEnd));
        }
        for (uint64_t rest = marks.fieldEnds; rest != 0; rest &= rest - 1)
            *fieldEnd++ = start + static_cast<size_t>(std::countr_zero(rest));
        start += ByteMarks::blockSize;
    }
}
