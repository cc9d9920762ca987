#include "chromosome_load.h"

#include "point_collector.h"
#include "utf8.h"

Result<Points> loadChromosome(QIODevice& device, const QString& label, const ReadOptions& options) {
    AssociationFile file(device, options);
    if (!file.open())
        return *file.fault();
    options.atData();
    QByteArray labelBytes;
    appendUtf8(label, labelBytes);
    const std::string_view wanted(labelBytes.constData(), static_cast<size_t>(labelBytes.size()));
    PointCollector points;
    Record record;
    Marker marker;
    // The line before the first counts as one with an empty label, which an empty label matches.
    bool inRun = label.isEmpty();
    while (file.next(record)) {
        if (record.chromosome != wanted) {
            if (inRun)
                break;
            continue;
        }
        inRun = true;
        if (file.readMarker(record, marker))
            points.append(marker.position, marker.pValue);
    }
    if (file.fault())
        return *file.fault();
    if (points.size() < 2)
        return Fault{FaultCode::TooFewChromosomePoints, 0, {}, label};
    return points.take();
}
