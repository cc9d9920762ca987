#include "plain_leads.h"

#include <cmath>

namespace plain {

namespace {

// A table's rows without the order that they are in.
class Markers {
public:
    Markers(const ScanTable& table, const LeadRule& rule) : m_table(table), m_rule(rule) {}

    size_t count() const { return m_table.size(); }
    bool isBelow(size_t row) const { return m_table.negLog10(row) > m_rule.negLog10; }

    qsizetype chromosome(size_t row) const {
        qsizetype chromosome = 0;
        while (row >= m_table.chromosomes[chromosome].end)
            ++chromosome;
        return chromosome;
    }

    // Base pairs; infinite on another chromosome.
    double distance(size_t a, size_t b) const {
        return chromosome(a) == chromosome(b)
                   ? std::abs(double(m_table.position(a)) - double(m_table.position(b)))
                   : HUGE_VAL;
    }

    bool isStronger(size_t a, size_t b) const {
        if (m_table.negLog10(a) != m_table.negLog10(b))
            return m_table.negLog10(a) > m_table.negLog10(b);
        return m_table.lines[a] < m_table.lines[b];
    }

    bool isFree(size_t row, const std::vector<size_t>& leads) const {
        for (const size_t lead : leads)
            if (distance(row, lead) < m_rule.window)
                return false;
        return isBelow(row);
    }

    // The strongest that may be a lead yet; count() where there is none.
    size_t nextLead(const std::vector<size_t>& leads) const {
        size_t best = count();
        for (size_t row = 0; row < count(); ++row)
            if (isFree(row, leads) && (best == count() || isStronger(row, best)))
                best = row;
        return best;
    }

    size_t nearestLead(size_t row, const std::vector<size_t>& leads) const {
        size_t best = leads.front(); // leads are the strongest first
        for (const size_t lead : leads)
            if (distance(row, lead) < distance(row, best))
                best = lead;
        return best;
    }

    LeadMarker described(size_t lead, const std::vector<size_t>& leads) const {
        LeadMarker marker;
        marker.chromosome = chromosome(lead);
        marker.row = lead;
        marker.firstHit = m_table.position(lead);
        marker.lastHit = marker.firstHit;
        for (size_t row = 0; row < count(); ++row) {
            if (distance(row, lead) <= 250'000)
                addNeighbor(row, marker);
            if (isBelow(row) && nearestLead(row, leads) == lead) {
                ++marker.hits;
                marker.firstHit = std::min(marker.firstHit, m_table.position(row));
                marker.lastHit = std::max(marker.lastHit, m_table.position(row));
            }
        }
        return marker;
    }

private:
    void addNeighbor(size_t row, LeadMarker& marker) const {
        ++marker.nearby;
        if (row == marker.row)
            return;
        if (!marker.neighbor || isStronger(row, *marker.neighbor))
            marker.neighbor = row;
        if (2 * m_table.negLog10(row) >= m_table.negLog10(marker.row))
            marker.isLone = false;
    }

    const ScanTable& m_table;
    const LeadRule& m_rule;
};

} // namespace

std::vector<LeadMarker> leadMarkers(const ScanTable& table, const LeadRule& rule) {
    const Markers markers(table, rule);
    std::vector<size_t> leads;
    for (size_t row = 0; (row = markers.nextLead(leads)) < markers.count();)
        leads.push_back(row);
    std::vector<LeadMarker> described;
    for (size_t row = 0; row < markers.count(); ++row)
        for (const size_t lead : leads)
            if (lead == row)
                described.push_back(markers.described(lead, leads));
    return described;
}

} // namespace plain
