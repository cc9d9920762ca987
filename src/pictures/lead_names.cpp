#include "lead_names.h"

#include "lead_markers.h"
#include "marker_texts.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double threshold = 5e-8;

bool isDrawn(const LeadMarker& lead, const ScanTable& table, const PlotRequest& request) {
    return (!request.chromosome ||
            table.chromosomes[lead.chromosome].name == *request.chromosome) &&
           (!request.range || request.range->contains(table.position(lead.row)));
}

QString placeName(const LeadMarker& lead, const ScanTable& table) {
    return QString::fromUtf8(table.chromosomes[lead.chromosome].name) + u':' +
           QString::number(table.position(lead.row));
}

} // namespace

std::variant<QList<NamedRow>, Refusal> leadNames(const QString& path, const ScanTable& table,
                                                 const PlotRequest& request) {
    std::vector<LeadMarker> leads = leadMarkers(table, {-std::log10(threshold)});
    std::erase_if(leads, [&](const LeadMarker& lead) { return !isDrawn(lead, table, request); });
    std::stable_sort(leads.begin(), leads.end(), [&](const LeadMarker& a, const LeadMarker& b) {
        return table.negLog10(a.row) > table.negLog10(b.row);
    });
    leads.resize(std::min(leads.size(), static_cast<size_t>(request.labelledHits)));
    std::vector<size_t> rows;
    rows.reserve(leads.size());
    for (const LeadMarker& lead : leads)
        rows.push_back(lead.row);
    const auto texts = readMarkerTexts(path, table, rows, {});
    if (const auto* refusal = std::get_if<Refusal>(&texts))
        return *refusal;
    QList<NamedRow> named;
    for (const LeadMarker& lead : leads) {
        const QByteArray name = std::get<0>(texts).value(lead.row).name;
        named.append({lead.row, name.isEmpty() ? placeName(lead, table) : QString::fromUtf8(name)});
    }
    return named;
}
