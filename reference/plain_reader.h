#pragma once

#include "fault.h"
#include "genome_scan.h"
#include "points.h"

#include <QString>

class QIODevice;

// The reference for reading files: QTextStream, one line at a time, split at the delimiter. The
// device must not be open; it is read from its start.
namespace plain {

Result<GenomeScan> scanGenome(QIODevice& device);
Result<Points> loadChromosome(QIODevice& device, const QString& label);

} // namespace plain
