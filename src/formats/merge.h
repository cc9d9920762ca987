#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

// Merges sorted sources. A source has `bool atEnd()` and `place()`, by which it is ordered; the
// places of all sources differ.
template <typename Source>
class Merge {
public:
    explicit Merge(std::vector<Source> sources) : m_sources(std::move(sources)) {
        for (Source& source : m_sources)
            if (!source.atEnd())
                m_heap.push_back({source.place(), &source});
        for (std::size_t i = m_heap.size() / 2; i-- > 0;)
            sink(i);
    }
    Merge(const Merge&) = delete;
    Merge& operator=(const Merge&) = delete;

    bool atEnd() const { return m_heap.empty(); }

    // The source that has the lowest place.
    Source& top() { return *m_heap.front().source; }

    // To be called once the top has moved on.
    void update() {
        if (top().atEnd()) {
            m_heap.front() = m_heap.back();
            m_heap.pop_back();
        } else {
            m_heap.front().place = top().place();
        }
        if (!m_heap.empty())
            sink(0);
    }

private:
    using Place = std::remove_cvref_t<decltype(std::declval<Source>().place())>;
    struct Node {
        Place place;
        Source* source;
    };

    // Moves a node down until no lower one is under it.
    void sink(std::size_t at) {
        const Node node = m_heap[at];
        for (std::size_t child = 2 * at + 1; child < m_heap.size(); child = 2 * at + 1) {
            if (child + 1 < m_heap.size() && m_heap[child + 1].place < m_heap[child].place)
                ++child;
            if (node.place < m_heap[child].place)
                break;
            m_heap[at] = m_heap[child];
            at = child;
        }
        m_heap[at] = node;
    }

    std::vector<Source> m_sources;
    std::vector<Node> m_heap;
};
