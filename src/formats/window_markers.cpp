#include "window_markers.h"

#include "association_file.h"
#include "point_collector.h"
#include "titles.h"

#include <QFile>
#include <QSet>

std::optional<ScanTable> readWindowMarkers(const QString& path) {
    constexpr qsizetype mostLabels = 100'000; // more are marker names
    QFile device(path);
    AssociationFile file(device, {});
    if (!file.open())
        return std::nullopt;
    ScanTable table;
    PointCollector points;
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
                table.chromosomes.append({label, table.size(), table.size()});
        }
        if (!file.readMarker(record, marker) || !isFirstStretch)
            continue;
        points.append(marker.position, marker.pValue);
        table.lines.append(file.line());
        table.chromosomes.last().end = table.size();
    }
    table.points = points.take();
    return file.fault() ? std::nullopt : std::optional(std::move(table));
}
