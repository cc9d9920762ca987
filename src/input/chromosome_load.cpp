#include "input/chromosome_load.h"

#include "input/association_file.h"
#include "input/marker.h"
#include "input/utf8.h"

Result<Points> loadChromosome(AssociationFile& file, const QString& label) {
    QByteArray wanted;
    appendUtf8(label, wanted);
    Points points;
    Record record;
    Marker marker;
    // The line before the first counts as one with an empty label, which an empty label matches.
    bool inRun = label.isEmpty();
    while (file.next(record)) {
        if (record.chromosome != std::string_view(wanted)) {
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
        points.positions.append(marker.position);
        points.values.append(marker.value);
    }
    if (file.fault())
        return *file.fault();
    if (points.positions.size() < 2)
        return Fault::TooFewChromosomePoints;
    return points;
}
