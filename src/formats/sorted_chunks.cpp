#include "sorted_chunks.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr size_t chunkRows = 64 * 1024;
constexpr unsigned chunkBits = 20; // of an arrival, for the place within a chunk of texts
constexpr size_t textChunkSize = size_t{1} << chunkBits;
constexpr quint32 firstPosition = quint32{1} << 31; // what is added to positions

// Before each text stand its chromosome and its size, seven bits a byte: most take one byte each.
constexpr size_t longestNumber = 5; // bytes
constexpr quint32 moreFollows = 0x80;

char* writeNumber(quint32 number, char* at) {
    for (; number >= moreFollows; number >>= 7)
        *at++ = static_cast<char>(number | moreFollows);
    *at++ = static_cast<char>(number);
    return at;
}

quint32 readNumber(const char*& at) {
    quint32 number = 0;
    for (unsigned shift = 0;; shift += 7) {
        const auto byte = static_cast<unsigned char>(*at++);
        number |= (byte & ~moreFollows) << shift;
        if ((byte & moreFollows) == 0)
            return number;
    }
}

} // namespace

quint64 rowKey(quint32 chromosome, int position) {
    return quint64{chromosome} << 32 | (static_cast<quint32>(position) ^ firstPosition);
}

quint32 chromosomeOf(quint64 key) {
    return static_cast<quint32>(key >> 32);
}

int positionOf(quint64 key) {
    return static_cast<int>(static_cast<quint32>(key) ^ firstPosition);
}

void SortedChunks::add(quint32 chromosome, int position, std::string_view text) {
    if (m_chunks.empty() || m_chunks.back().size == chunkRows)
        m_chunks.push_back({std::make_unique_for_overwrite<RowPlace[]>(chunkRows)});
    char* const start = roomFor(2 * longestNumber + text.size());
    char* end = writeNumber(chromosome, start);
    end = writeNumber(static_cast<quint32>(text.size()), end);
    end = std::copy(text.begin(), text.end(), end);
    const quint64 chunkNumber = m_textsCleared + m_texts.size() - 1;
    Chunk& chunk = m_chunks.back();
    chunk.places[chunk.size++] = {rowKey(chromosome, position),
                                  chunkNumber << chunkBits | m_textEnd};
    const auto size = static_cast<size_t>(end - start);
    m_textEnd += size;
    m_textRoom -= size;
    m_bytesUsed += static_cast<qint64>(sizeof(RowPlace) + size);
}

// Where the next text goes. One that is larger than a chunk gets a chunk to itself.
char* SortedChunks::roomFor(size_t size) {
    if (m_texts.empty() || size > m_textRoom) {
        m_textRoom = std::max(size, textChunkSize);
        m_textEnd = 0;
        m_texts.push_back(std::make_unique_for_overwrite<char[]>(m_textRoom));
    }
    return m_texts.back().get() + m_textEnd;
}

const char* SortedChunks::at(quint64 arrival) const {
    const auto& chunk = m_texts[static_cast<size_t>((arrival >> chunkBits) - m_textsCleared)];
    return chunk.get() + (arrival & (textChunkSize - 1));
}

SortedChunks::Row SortedChunks::row(quint64 arrival) const {
    const char* text = at(arrival);
    const quint32 chromosome = readNumber(text), size = readNumber(text);
    return {chromosome, {text, size}};
}

void SortedChunks::prefetch(quint64 arrival) const {
    __builtin_prefetch(at(arrival));
}

// A radix sort, byte by byte from the lowest. It keeps the order of equal keys, so that they stay
// in that of their arrival. Bytes that are the same in all keys cost nothing.
void SortedChunks::sort(Chunk& chunk) {
    if (!m_scratch)
        m_scratch = std::make_unique_for_overwrite<RowPlace[]>(chunkRows);
    const RowPlace* const first = chunk.places.get();
    quint64 differing = 0;
    for (size_t i = 0; i < chunk.size; ++i)
        differing |= first[i].key ^ first->key;
    for (unsigned shift = 0; shift < 64; shift += 8) {
        if ((differing >> shift & 0xff) == 0)
            continue;
        std::array<size_t, 257> starts{};
        for (size_t i = 0; i < chunk.size; ++i)
            ++starts[(chunk.places[i].key >> shift & 0xff) + 1];
        for (size_t i = 1; i < starts.size(); ++i)
            starts[i] += starts[i - 1];
        for (size_t i = 0; i < chunk.size; ++i)
            m_scratch[starts[chunk.places[i].key >> shift & 0xff]++] = chunk.places[i];
        std::swap(chunk.places, m_scratch);
    }
}

void SortedChunks::clear() {
    m_chunks.clear();
    m_textsCleared += m_texts.size();
    m_texts.clear();
    m_textRoom = 0;
    m_bytesUsed = 0;
}
