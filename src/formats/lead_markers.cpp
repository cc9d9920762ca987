#include "lead_markers.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <set>

namespace {

// Below every -log10 p that ScanTable::values has of a p that no normal double holds.
constexpr double tiny = 307.0;

class ChromosomeLeads {
public:
    ChromosomeLeads(const ScanTable& table, qsizetype chromosome, const LeadRule& rule)
        : m_table(table), m_chromosome(chromosome), m_rows(table.chromosomes[chromosome]),
          m_rule(rule) {}

    void find(std::vector<LeadMarker>& leads) {
        findHits();
        if (m_hits.empty())
            return;
        chooseLeads();
        countHits();
        for (LeadMarker& lead : m_leads)
            lookAround(lead);
        leads.insert(leads.end(), m_leads.begin(), m_leads.end());
    }

private:
    int position(size_t row) const { return m_table.position(row); }

    bool isStronger(size_t a, size_t b) const {
        const double first = m_table.negLog10(a), second = m_table.negLog10(b);
        return first != second ? first > second : m_table.lines[a] < m_table.lines[b];
    }

    void findHits() {
        const double quick = std::min(m_rule.negLog10, tiny);
        for (size_t row = m_rows.begin; row < m_rows.end; ++row)
            if (m_table.value(row) > quick && m_table.negLog10(row) > m_rule.negLog10)
                m_hits.push_back(row);
    }

    void chooseLeads() {
        std::vector<size_t> strongestFirst = m_hits;
        std::sort(strongestFirst.begin(), strongestFirst.end(),
                  [this](size_t a, size_t b) { return isStronger(a, b); });
        std::set<int> taken;
        std::vector<size_t> rows;
        for (const size_t row : strongestFirst) {
            const auto after = taken.lower_bound(position(row));
            if ((after != taken.end() && *after - position(row) < m_rule.window) ||
                (after != taken.begin() && position(row) - *std::prev(after) < m_rule.window))
                continue;
            taken.insert(after, position(row));
            rows.push_back(row);
        }
        std::sort(rows.begin(), rows.end());
        for (const size_t row : rows) {
            LeadMarker& lead = m_leads.emplace_back();
            lead.chromosome = m_chromosome;
            lead.row = row;
        }
    }

    // Both hits and leads are in order of position.
    void countHits() {
        size_t nearest = 0;
        for (const size_t row : m_hits) {
            while (nearest + 1 < m_leads.size() && isNextNearer(nearest, row))
                ++nearest;
            LeadMarker& lead = m_leads[nearest];
            if (lead.hits++ == 0)
                lead.firstHit = position(row);
            lead.lastHit = position(row);
        }
    }

    bool isNextNearer(size_t lead, size_t row) const {
        const size_t here = m_leads[lead].row, next = m_leads[lead + 1].row;
        const int toHere = std::abs(position(row) - position(here));
        const int toNext = std::abs(position(row) - position(next));
        return toNext != toHere ? toNext < toHere : isStronger(next, here);
    }

    void lookAround(LeadMarker& lead) const {
        const auto at = [this](size_t row) {
            return m_table.points.positions.begin() + static_cast<qsizetype>(row);
        };
        const qint64 center = position(lead.row);
        const auto first =
            std::lower_bound(at(m_rows.begin), at(lead.row), center - LeadMarker::reach);
        const auto end = std::upper_bound(at(lead.row), at(m_rows.end), center + LeadMarker::reach);
        lead.nearby = end - first;
        const auto firstRow = static_cast<size_t>(first - m_table.points.positions.begin());
        for (size_t row = firstRow; row < firstRow + static_cast<size_t>(lead.nearby); ++row)
            if (row != lead.row && (!lead.neighbor || isStronger(row, *lead.neighbor)))
                lead.neighbor = row;
        lead.isLone =
            !lead.neighbor || m_table.negLog10(*lead.neighbor) < m_table.negLog10(lead.row) / 2;
    }

    const ScanTable& m_table;
    const qsizetype m_chromosome;
    const ScanTable::Chromosome& m_rows;
    const LeadRule& m_rule;
    std::vector<size_t> m_hits; // rows below the threshold
    std::vector<LeadMarker> m_leads;
};

} // namespace

std::vector<LeadMarker> leadMarkers(const ScanTable& table, const LeadRule& rule) {
    std::vector<LeadMarker> leads;
    for (qsizetype chromosome = 0; chromosome < table.chromosomes.size(); ++chromosome)
        ChromosomeLeads(table, chromosome, rule).find(leads);
    return leads;
}
