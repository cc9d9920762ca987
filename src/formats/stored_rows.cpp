#include "stored_rows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <numeric>
#include <span>
#include <utility>

namespace {

// Memory that large goes back to the system as soon as it is freed, and none is used up before it
// is written to.
constexpr size_t chunkRows = size_t{2} << 20;
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

// A radix sort, byte by byte from the lowest. It keeps the order of equal keys, so that they stay
// in that of their arrival. Bytes that are the same in all keys cost nothing. Large parts, where
// nearly all rows are in a small share of the range, are sorted without memory for a second list.
void sortPart(std::span<RowPlace> part, std::vector<RowPlace>& scratch) {
    constexpr size_t fewest = 256, most = 1 << 20;
    if (part.size() < fewest || part.size() > most) {
        std::sort(part.begin(), part.end());
        return;
    }
    scratch.resize(std::max(scratch.size(), part.size()));
    std::span<RowPlace> from = part, to(scratch.data(), part.size());
    quint64 differing = 0;
    for (const RowPlace& place : part)
        differing |= place.key ^ part.front().key;
    for (unsigned shift = 0; shift < 64; shift += 8) {
        if ((differing >> shift & 0xff) == 0)
            continue;
        std::array<size_t, 257> starts{};
        for (const RowPlace& place : from)
            ++starts[(place.key >> shift & 0xff) + 1];
        std::partial_sum(starts.begin(), starts.end(), starts.begin());
        for (const RowPlace& place : from)
            to[starts[place.key >> shift & 0xff]++] = place;
        std::swap(from, to);
    }
    if (from.data() != part.data())
        std::ranges::copy(from, part.begin());
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

void StoredRows::add(quint32 chromosome, int position, std::string_view text) {
    if (m_chunks.empty() || m_chunks.back().size() == chunkRows)
        m_chunks.emplace_back().reserve(chunkRows);
    char* const start = roomFor(2 * longestNumber + text.size());
    char* end = writeNumber(chromosome, start);
    end = writeNumber(static_cast<quint32>(text.size()), end);
    end = std::copy(text.begin(), text.end(), end);
    const quint64 chunkNumber = m_textsCleared + m_texts.size() - 1;
    m_chunks.back().push_back({rowKey(chromosome, position), chunkNumber << chunkBits | m_textEnd});
    const auto size = static_cast<size_t>(end - start);
    m_textEnd += size;
    m_textRoom -= size;
    ++m_size;
    m_bytesUsed += static_cast<qint64>(sizeof(RowPlace) + size);
}

// Where the next text goes. One that is larger than a chunk gets a chunk to itself.
char* StoredRows::roomFor(size_t size) {
    if (m_texts.empty() || size > m_textRoom) {
        m_textRoom = std::max(size, textChunkSize);
        m_textEnd = 0;
        m_texts.push_back(std::make_unique_for_overwrite<char[]>(m_textRoom));
    }
    return m_texts.back().get() + m_textEnd;
}

const char* StoredRows::at(quint64 arrival) const {
    const auto& chunk = m_texts[static_cast<size_t>((arrival >> chunkBits) - m_textsCleared)];
    return chunk.get() + (arrival & (textChunkSize - 1));
}

StoredRows::Row StoredRows::row(quint64 arrival) const {
    const char* text = at(arrival);
    const quint32 chromosome = readNumber(text), size = readNumber(text);
    return {chromosome, {text, size}};
}

// The second half of a text is often in the next line of the cache.
void StoredRows::prefetch(quint64 arrival) const {
    constexpr size_t half = 32; // bytes
    const char* const text = at(arrival);
    __builtin_prefetch(text);
    __builtin_prefetch(text + half);
}

// Parts the rows by the highest bits in which their keys differ, and then sorts the parts, most of
// which fit in a cache. Chunks are freed as their rows move to the list.
void StoredRows::sort() {
    constexpr int mostPartBits = 14;
    quint64 lowest = std::numeric_limits<quint64>::max(), highest = 0;
    for (const std::vector<RowPlace>& chunk : m_chunks)
        for (const RowPlace& place : chunk) {
            lowest = std::min(lowest, place.key);
            highest = std::max(highest, place.key);
        }
    const int keyBits = m_chunks.empty() ? 0 : 64 - std::countl_zero(highest - lowest);
    const int partBits = std::min({mostPartBits, keyBits, 64 - std::countl_zero(m_size)});
    const auto partOf = [=](const RowPlace& place) {
        return static_cast<size_t>((place.key - lowest) >> (keyBits - partBits));
    };
    std::vector<size_t> ends((size_t{1} << partBits) + 1); // of the parts that are filled
    for (const std::vector<RowPlace>& chunk : m_chunks)
        for (const RowPlace& place : chunk)
            ++ends[partOf(place) + 1];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    m_places = std::make_unique_for_overwrite<RowPlace[]>(m_size);
    for (std::vector<RowPlace>& chunk : m_chunks)
        for (const RowPlace& place : std::exchange(chunk, {}))
            m_places[ends[partOf(place)]++] = place;
    std::vector<RowPlace> scratch;
    for (size_t begin = 0; const size_t end : ends) {
        sortPart({m_places.get() + begin, end - begin}, scratch);
        begin = end;
    }
}

void StoredRows::clear() {
    m_chunks.clear();
    m_places.reset();
    m_size = 0;
    m_textsCleared += m_texts.size();
    m_texts.clear();
    m_textRoom = 0;
    m_bytesUsed = 0;
}
