#pragma once

#include <QtGlobal>
#include <memory>
#include <string_view>
#include <vector>

// The place of a row: first its key, then when it arrived, which is also where its text is.
struct RowPlace {
    quint64 key = 0; // chromosome and position
    quint64 arrival = 0;

    bool operator<(const RowPlace& other) const {
        return key != other.key ? key < other.key : arrival < other.arrival;
    }
};

// Keys order as the position does within a chromosome, negative ones too.
quint64 rowKey(quint32 chromosome, int position);
quint32 chromosomeOf(quint64 key);
int positionOf(quint64 key);

// Rows in memory: their places in chunks that are sorted one by one, their texts in chunks that
// never move.
class SortedChunks {
public:
    void add(quint32 chromosome, int position, std::string_view text);

    // Gives each row the key that `changed` makes of its own, and sorts each chunk.
    template <typename Function>
    void sort(Function changed) {
        for (Chunk& chunk : m_chunks) {
            for (size_t i = 0; i < chunk.size; ++i)
                chunk.places[i].key = changed(chunk.places[i].key);
            sort(chunk);
        }
    }

    size_t chunkCount() const { return m_chunks.size(); }
    const RowPlace* begin(size_t chunk) const { return m_chunks[chunk].places.get(); }
    const RowPlace* end(size_t chunk) const { return begin(chunk) + m_chunks[chunk].size; }

    // What was added, but for the position.
    struct Row {
        quint32 chromosome;
        std::string_view text;
    };
    Row row(quint64 arrival) const;

    // Starts loading a text that will be wanted soon.
    void prefetch(quint64 arrival) const;

    qint64 bytesUsed() const { return m_bytesUsed; }

    // Forgets all rows. Those added later still arrive after them.
    void clear();

private:
    struct Chunk {
        std::unique_ptr<RowPlace[]> places;
        size_t size = 0;
    };

    const char* at(quint64 arrival) const;
    char* roomFor(size_t size);
    void sort(Chunk& chunk);

    std::vector<Chunk> m_chunks;
    std::vector<std::unique_ptr<char[]>> m_texts;
    std::unique_ptr<RowPlace[]> m_scratch;
    size_t m_textEnd = 0;  // in the last chunk of texts
    size_t m_textRoom = 0; // after it
    quint64 m_textsCleared = 0;
    qint64 m_bytesUsed = 0;
};
