#pragma once

#include <QtGlobal>
#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

// The place of a row: first its key, then when it arrived, which is also where its text is.
struct RowPlace {
    quint64 key; // chromosome and position
    quint64 arrival;

    bool operator<(const RowPlace& other) const {
        return key != other.key ? key < other.key : arrival < other.arrival;
    }
};

// Keys order as the position does within a chromosome, negative ones too.
quint64 rowKey(quint32 chromosome, int position);
quint32 chromosomeOf(quint64 key);
int positionOf(quint64 key);

// Rows in memory: their places in a list that is sorted at the end, their texts in chunks that
// never move.
class StoredRows {
public:
    void add(quint32 chromosome, int position, std::string_view text);

    // Ends adding: gives each row the key that `changed` makes of its own, and sorts them.
    template <typename Function>
    void sort(Function changed) {
        for (std::vector<RowPlace>& chunk : m_chunks)
            for (RowPlace& place : chunk)
                place.key = changed(place.key);
        sort();
    }

    size_t size() const { return m_size; }

    // A row once they are sorted. Starts loading the text of one further on, which may be anywhere.
    const RowPlace& place(size_t i) const {
        constexpr size_t ahead = 24;
        if (i + ahead < m_size)
            prefetch(m_places[i + ahead].arrival);
        return m_places[i];
    }

    // What was added, but for the position.
    struct Row {
        quint32 chromosome;
        std::string_view text;
    };
    Row row(quint64 arrival) const;

    // With what sorting will take besides: some places are then in two lists.
    qint64 bytesUsed() const {
        constexpr size_t most = 64 << 20;
        return m_bytesUsed + static_cast<qint64>(std::min(m_size * sizeof(RowPlace), most));
    }

    // Forgets all rows. Those added later still arrive after them.
    void clear();

private:
    const char* at(quint64 arrival) const;
    char* roomFor(size_t size);
    void sort();
    void prefetch(quint64 arrival) const;

    std::vector<std::vector<RowPlace>> m_chunks; // of places, until they are sorted
    std::unique_ptr<RowPlace[]> m_places;        // once they are
    size_t m_size = 0;
    std::vector<std::unique_ptr<char[]>> m_texts;
    size_t m_textEnd = 0;  // in the last chunk of texts
    size_t m_textRoom = 0; // after it
    quint64 m_textsCleared = 0;
    qint64 m_bytesUsed = 0;
};
