#include "window_markers.h"

#include "association_file.h"
#include "titles.h"

#include <QFile>
#include <QSet>
#include <cmath>

std::optional<ScanTable> readWindowMarkers(const QString& path) {
    constexpr qsizetype mostLabels = 100'000; // more are marker names
    QFile device(path);
    AssociationFile file(device, {});
    if (!file.open())
        return std::nullopt;
    ScanTable table;
    QSet<QByteArray> labels;
    QByteArray label;
    bool isFirstStretch = false, isFirstLine = true;
    Record record;
    Marker marker;
    while (file.next(record)) {
        if (isFirstLine || viewOf(label) != record.chromosome) {
            isFirstLine = false;
            label = bytesOf(record.chromosome);
            isFirstStretch = !labels.contains(label);
            labels.insert(label);
            if (labels.size() > mostLabels)
                return std::nullopt;
            if (isFirstStretch)
                table.chromosomes.append({label, table.lines.size(), table.lines.size()});
        }
        if (!file.readMarker(record, marker) || !isFirstStretch)
            continue;
        table.positions.push_back(marker.position);
        table.values.push_back(-std::log10(marker.pValue));
        table.lines.push_back(file.line());
        table.chromosomes.last().end = table.lines.size();
    }
    return file.fault() ? std::nullopt : std::optional(std::move(table));
}
