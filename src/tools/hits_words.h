#pragma once

#include "lead_markers.h"
#include "marker_texts.h"
#include "prepare_words.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QJsonObject>
#include <optional>
#include <vector>

// What `hits` found.
struct Hits {
    const ScanTable& scan;
    PreparedTable reading;
    QByteArray threshold; // the p, as its user wrote it
    LeadRule rule;
    std::vector<LeadMarker> leads;
    QHash<size_t, MarkerTexts> texts; // of the leads and their neighbors, by row
    QByteArrayList titles;            // of the columns appended
    std::optional<double> lambda;
};

// The table: a header, and a line for each lead.
QByteArray tableOf(const Hits& hits);

// The report as text in UTF-8.
QByteArray textOf(const Hits& hits);

// Report and leads for programs; docs/tools.md describes them.
QJsonObject jsonOf(const Hits& hits);
