#include "chromosome_load.h"

#include "association_file.h"
#include "marker.h"
#include "point_collector.h"
#include "utf8.h"

Result<Points> loadChromosome(AssociationFile& file, const QString& label) {
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
        const MarkerResult result = readMarker(record, marker);
        if (const std::optional<Fault> fault = faultOf(result))
            return *fault;
        if (result == MarkerResult::Skipped)
            continue;
        points.append(marker.position, marker.pValue);
    }
    if (file.fault())
        return *file.fault();
    if (points.size() < 2)
        return Fault::TooFewChromosomePoints;
    return points.take();
}
