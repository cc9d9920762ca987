#pragma once

#include "association_file.h"
#include "points.h"

#include <QString>

// Reads the points of the first run of lines labelled `label`, at their positions in base pairs.
// The device must be closed. Reading stops after that run, and numbers on other lines are not
// looked at. Lines whose p-value does not count belong to runs all the same. Fewer than two points
// are a fault.
Result<Points> loadChromosome(QIODevice& device, const QString& label,
                              const ReadOptions& options = {});
