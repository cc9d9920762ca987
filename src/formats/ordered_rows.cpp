#include "ordered_rows.h"

#include "merge.h"
#include "run_file.h"
#include "sorted_chunks.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr qint64 smallestBuffer = 4 * 1024; // bytes, to read a run by
constexpr qint64 largestBuffer = 1 << 20;

// Walks through the places of a chunk in memory.
class ChunkReader {
public:
    ChunkReader(const SortedChunks& chunks, size_t chunk)
        : m_chunks(&chunks), m_at(chunks.begin(chunk)), m_end(chunks.end(chunk)) {}

    bool atEnd() const { return m_at == m_end; }
    const RowPlace& place() const { return *m_at; }

    // Other chunks usually come in between, which is time to load the next text.
    void next() {
        if (++m_at != m_end)
            m_chunks->prefetch(m_at->arrival);
    }

private:
    const SortedChunks* m_chunks;
    const RowPlace* m_at;
    const RowPlace* m_end;
};

std::vector<ChunkReader> readersOf(const SortedChunks& chunks) {
    std::vector<ChunkReader> readers;
    for (size_t chunk = 0; chunk < chunks.chunkCount(); ++chunk)
        readers.emplace_back(chunks, chunk);
    return readers;
}

// Segments in the order of their ranks. Where chromosomes of a run share a rank, it takes several
// such lists.
std::vector<std::vector<RunReader::Part>> partsOf(const std::vector<Segment>& run,
                                                  const QList<quint32>& rank) {
    std::vector<RunReader::Part> parts;
    parts.reserve(run.size());
    for (const Segment& segment : run)
        parts.push_back({rank[segment.chromosome], segment});
    std::ranges::stable_sort(parts, {}, &RunReader::Part::rank);
    std::vector<std::vector<RunReader::Part>> lists;
    size_t list = 0;
    for (size_t i = 0; i < parts.size(); ++i) {
        list = i > 0 && parts[i].rank == parts[i - 1].rank ? list + 1 : 0;
        if (list == lists.size())
            lists.emplace_back();
        lists[list].push_back(parts[i]);
    }
    return lists;
}

} // namespace

// Rows are sorted by the numbers of their chromosomes as long as ranks are unknown.
struct OrderedRows::Implementation {
    explicit Implementation(qint64 limit) : memory(limit) {}

    bool spill();
    void mergeRuns(const QList<quint32>& rank);
    template <typename Source>
    bool advance(Merge<Source>& merge);
    bool nextInMemory(OrderedRow& row);
    bool nextOfRuns(OrderedRow& row);

    qint64 memory; // bytes
    SortedChunks rows;
    RunFile file;
    std::optional<Merge<ChunkReader>> fromMemory;
    std::optional<Merge<RunReader>> fromRuns;
    bool isRowTaken = false; // the one at the top
};

// Writes the rows to the file as a sorted run.
bool OrderedRows::Implementation::spill() {
    rows.sort([](quint64 key) { return key; });
    if (!file.startRun())
        return false;
    for (Merge<ChunkReader> merge(readersOf(rows)); !merge.atEnd(); merge.update()) {
        const RowPlace place = merge.top().place();
        if (!file.append(place, rows.row(place.arrival).text))
            return false;
        merge.top().next();
    }
    rows.clear();
    return file.flush();
}

void OrderedRows::Implementation::mergeRuns(const QList<quint32>& rank) {
    std::vector<std::vector<RunReader::Part>> lists;
    for (const std::vector<Segment>& run : file.runs())
        for (std::vector<RunReader::Part>& parts : partsOf(run, rank))
            lists.push_back(std::move(parts));
    const qint64 share = memory / std::max<qint64>(static_cast<qint64>(lists.size()), 1);
    std::vector<RunReader> readers;
    readers.reserve(lists.size());
    for (std::vector<RunReader::Part>& parts : lists)
        readers.emplace_back(file, std::move(parts),
                             std::clamp(share, smallestBuffer, largestBuffer));
    fromRuns.emplace(std::move(readers));
}

// Leaves the row that was taken last. False at the end.
template <typename Source>
bool OrderedRows::Implementation::advance(Merge<Source>& merge) {
    if (std::exchange(isRowTaken, true) && !merge.atEnd()) {
        merge.top().next();
        merge.update();
    }
    return !merge.atEnd();
}

bool OrderedRows::Implementation::nextInMemory(OrderedRow& row) {
    if (!advance(*fromMemory))
        return false;
    const RowPlace place = fromMemory->top().place();
    const SortedChunks::Row stored = rows.row(place.arrival);
    row = {stored.chromosome, positionOf(place.key), stored.text};
    return true;
}

bool OrderedRows::Implementation::nextOfRuns(OrderedRow& row) {
    if (!advance(*fromRuns))
        return false;
    const RunReader& reader = fromRuns->top();
    row = {reader.chromosome(), positionOf(reader.place().key), reader.text()};
    return true;
}

OrderedRows::OrderedRows(qint64 memory) : m(std::make_unique<Implementation>(memory)) {}

OrderedRows::~OrderedRows() = default;

bool OrderedRows::add(quint32 chromosome, int position, std::string_view text) {
    if (m->file.hasFailed())
        return false;
    m->rows.add(chromosome, position, text);
    return m->rows.bytesUsed() <= m->memory || m->spill();
}

bool OrderedRows::sort(const QList<quint32>& rank) {
    if (!m->file.runs().empty()) {
        if (m->file.hasFailed() || !m->spill())
            return false;
        m->mergeRuns(rank);
        return !m->file.hasFailed();
    }
    m->rows.sort([&rank](quint64 key) { return rowKey(rank[chromosomeOf(key)], positionOf(key)); });
    m->fromMemory.emplace(readersOf(m->rows));
    return true;
}

bool OrderedRows::next(OrderedRow& row) {
    const bool isRow = m->fromRuns ? m->nextOfRuns(row) : m->fromMemory && m->nextInMemory(row);
    return isRow && !m->file.hasFailed();
}

QString OrderedRows::error() const {
    return m->file.error();
}
