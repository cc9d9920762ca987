#pragma once

#include "text_blocks.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

// Text that is appended to in small pieces, millions of times over. It keeps its memory when
// cleared.
class TextBuffer {
public:
    size_t size() const { return m_size; }
    std::string_view view() const { return {m_bytes.data(), m_size}; }
    void clear() { m_size = 0; }
    void truncate(size_t size) { m_size = size; }

    void append(std::string_view text) {
        std::memcpy(room(text.size()), text.data(), text.size());
        m_size += text.size();
    }

    // The same for a text that is followed by `chunk` readable bytes. A copy of fixed size costs
    // less than one whose size cannot be foreseen.
    static constexpr size_t chunk = TextBlocks::padding;
    void appendPadded(std::string_view text) {
        char* const at = room(std::max(text.size(), chunk));
        if (text.size() <= chunk)
            std::memcpy(at, text.data(), chunk);
        else
            std::memcpy(at, text.data(), text.size());
        m_size += text.size();
    }
    void append(char character) { append(std::string_view(&character, 1)); }

    // Where the next `size` bytes may be written, and the end of those that were.
    char* room(size_t size) {
        if (m_bytes.size() - m_size < size)
            m_bytes.resize(std::max(2 * m_bytes.size(), m_size + size));
        return m_bytes.data() + m_size;
    }
    void setEnd(const char* end) { m_size = static_cast<size_t>(end - m_bytes.data()); }

private:
    std::vector<char> m_bytes = std::vector<char>(1024);
    size_t m_size = 0;
};
