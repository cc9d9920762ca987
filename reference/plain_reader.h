#pragma once

#include "fault.h"
#include "genome_scan.h"
#include "points.h"

#include <QString>

class QIODevice;

// The second opinion on reading: the toolkit's text stream, one line at a time, split at the
// delimiter, every rule written out as one would tell it. Slow, and never part of the program.
// Both open the device themselves and read it from its start.
namespace plain {

Result<GenomeScan> scanGenome(QIODevice& device);
Result<Points> loadChromosome(QIODevice& device, const QString& label);

} // namespace plain
