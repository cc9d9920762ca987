#include "table_match.h"

#include "marker_choice.h"
#include "point_table.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace {

// The positions of all tables. Says no for nearly every other position.
class PositionFilter {
public:
    explicit PositionFilter(const std::vector<WantedTable>& tables) {
        constexpr size_t bitsPerRow = 64, fewest = 1 << 20;
        size_t rows = 0;
        for (const WantedTable& wanted : tables)
            rows += wanted.table.rows.size();
        const size_t bits = std::bit_ceil(std::max(rows * bitsPerRow, fewest));
        m_shift = 64 - std::countr_zero(bits);
        m_bits.resize(bits / 64);
        for (const WantedTable& wanted : tables)
            for (const SavedTable::Row& row : wanted.table.rows)
                m_bits[hash(row.position) / 64] |= quint64{1} << hash(row.position) % 64;
    }

    bool mayHold(int position) const {
        const size_t bit = hash(position);
        return (m_bits[bit / 64] >> bit % 64 & 1) != 0;
    }

private:
    size_t hash(int position) const {
        return static_cast<quint64>(static_cast<quint32>(position)) * 0x9E3779B97F4A7C15 >> m_shift;
    }

    std::vector<quint64> m_bits;
    int m_shift = 0;
};

// A marker that is like a row.
struct Hit {
    size_t key = 0;
    size_t marker = 0;
};

// Finds the rows of one table, chromosome by chromosome.
class Matcher {
public:
    Matcher(const ScanTable& scan, const WantedTable& wanted);

    void look(size_t marker, int position, std::string_view numbers);
    void endChromosome(size_t chromosome);
    TableMatch take();

private:
    struct Key { // equal rows
        int position = 0;
        std::string_view numbers;
        size_t named = 0;
        size_t found = 0;

        bool isBefore(int otherPosition, std::string_view otherNumbers) const {
            return position != otherPosition ? position < otherPosition : numbers < otherNumbers;
        }
    };

    const ScanTable& m_scan;
    const WantedTable& m_wanted;
    std::optional<size_t> m_chromosome; // the only one to look at
    std::vector<Key> m_keys;            // sorted
    std::vector<size_t> m_keyOfRow;
    std::vector<Hit> m_hits; // in this chromosome
    std::vector<Hit> m_bestHits;
    size_t m_bestCount = 0;
    TableMatch m_match;
};

Matcher::Matcher(const ScanTable& scan, const WantedTable& wanted)
    : m_scan(scan), m_wanted(wanted), m_keyOfRow(wanted.table.rows.size()) {
    const SavedTable& table = wanted.table;
    if (wanted.label)
        m_chromosome = chromosomeOf(scan, *wanted.label);
    const auto keyOf = [&table](size_t row) {
        return Key{table.rows[row].position, table.numbers(table.rows[row])};
    };
    std::vector<size_t> order(table.rows.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::sort(order.begin(), order.end(), [&keyOf](size_t a, size_t b) {
        const Key second = keyOf(b);
        return keyOf(a).isBefore(second.position, second.numbers);
    });
    for (const size_t row : order) {
        const Key key = keyOf(row);
        if (m_keys.empty() || m_keys.back().isBefore(key.position, key.numbers))
            m_keys.push_back(key);
        ++m_keys.back().named;
        m_keyOfRow[row] = m_keys.size() - 1;
    }
}

void Matcher::look(size_t marker, int position, std::string_view numbers) {
    const auto key = std::partition_point(m_keys.begin(), m_keys.end(), [&](const Key& each) {
        return each.isBefore(position, numbers);
    });
    if (key == m_keys.end() || key->position != position || key->numbers != numbers)
        return;
    m_hits.push_back({static_cast<size_t>(key - m_keys.begin()), marker});
    ++key->found;
}

void Matcher::endChromosome(size_t chromosome) {
    size_t matched = 0;
    for (const Hit& hit : m_hits) {
        Key& key = m_keys[hit.key];
        matched += std::min(key.found, key.named);
        key.found = 0;
    }
    const bool isMeant = !m_wanted.label || m_chromosome == chromosome;
    if (isMeant && matched == m_wanted.table.rows.size() && matched > 0)
        m_match.fitting.append(m_scan.chromosomes[static_cast<qsizetype>(chromosome)].name);
    if (isMeant && matched > m_bestCount) {
        m_bestCount = matched;
        m_bestHits.swap(m_hits);
        m_match.chromosome = m_scan.chromosomes[static_cast<qsizetype>(chromosome)].name;
    }
    m_hits.clear();
}

TableMatch Matcher::take() {
    for (const Hit& hit : m_bestHits)
        if (m_keys[hit.key].found++ < m_keys[hit.key].named)
            m_match.lines.push_back(m_scan.lines[hit.marker]);
    for (const Key& key : m_keys)
        m_match.equal += key.found > key.named ? static_cast<qint64>(key.named) : 0;
    for (size_t row = 0; row < m_keyOfRow.size() && !m_match.missing; ++row)
        if (size_t& found = m_keys[m_keyOfRow[row]].found; found > 0)
            --found;
        else
            m_match.missing = row;
    return std::move(m_match);
}

} // namespace

std::vector<TableMatch> matchTables(const ScanTable& scan, const std::vector<WantedTable>& tables) {
    const PositionFilter filter(tables);
    std::vector<Matcher> matchers;
    matchers.reserve(tables.size());
    for (const WantedTable& wanted : tables)
        matchers.emplace_back(scan, wanted);
    char numbers[rowNumbersRoom];
    for (qsizetype chromosome = 0; chromosome < scan.chromosomes.size(); ++chromosome) {
        const ScanTable::Chromosome& rows = scan.chromosomes[chromosome];
        for (size_t i = rows.begin; i < rows.end; ++i) {
            if (!filter.mayHold(scan.position(i)))
                continue;
            const char* const end = writeRowNumbers(scan.value(i), numbers);
            for (Matcher& matcher : matchers)
                matcher.look(i, scan.position(i), {numbers, static_cast<size_t>(end - numbers)});
        }
        for (Matcher& matcher : matchers)
            matcher.endChromosome(static_cast<size_t>(chromosome));
    }
    std::vector<TableMatch> matches;
    matches.reserve(tables.size());
    for (Matcher& matcher : matchers)
        matches.push_back(matcher.take());
    return matches;
}
