#include "ordered_rows.h"

#include "merge.h"
#include "run_file.h"
#include "stored_rows.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr qint64 smallestBuffer = 4 * 1024; // bytes, to read a run by
constexpr qint64 largestBuffer = 1 << 20;

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
    bool nextInMemory(OrderedRow& row);
    bool nextOfRuns(OrderedRow& row);

    qint64 memory; // bytes
    StoredRows rows;
    RunFile file;
    bool isSorted = false; // in memory
    size_t taken = 0;      // of the rows there
    std::optional<Merge<RunReader>> fromRuns;
    bool isRowTaken = false; // the one at the top of the runs
};

// Writes the rows to the file as a sorted run.
bool OrderedRows::Implementation::spill() {
    rows.sort([](quint64 key) { return key; });
    if (!file.startRun())
        return false;
    for (size_t i = 0; i < rows.size(); ++i) {
        const RowPlace& place = rows.place(i);
        if (!file.append(place, rows.row(place.arrival).text))
            return false;
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

bool OrderedRows::Implementation::nextInMemory(OrderedRow& row) {
    if (!isSorted || taken == rows.size())
        return false;
    const RowPlace& place = rows.place(taken++);
    const StoredRows::Row stored = rows.row(place.arrival);
    row = {stored.chromosome, positionOf(place.key), stored.text};
    return true;
}

// Leaves the row that was taken last.
bool OrderedRows::Implementation::nextOfRuns(OrderedRow& row) {
    if (std::exchange(isRowTaken, true) && !fromRuns->atEnd()) {
        fromRuns->top().next();
        fromRuns->update();
    }
    if (fromRuns->atEnd())
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
    m->isSorted = true;
    return true;
}

bool OrderedRows::next(OrderedRow& row) {
    const bool isRow = m->fromRuns ? m->nextOfRuns(row) : m->nextInMemory(row);
    return isRow && !m->file.hasFailed();
}

QString OrderedRows::error() const {
    return m->file.error();
}
