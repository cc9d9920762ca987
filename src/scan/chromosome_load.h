#pragma once

#include "fault.h"
#include "points.h"

#include <QString>

class AssociationFile;

// Reads the points of the first run of lines labelled `label` from an opened file, at their
// positions in base pairs. Reading stops behind that run, and numbers on other lines are not looked
// at. Lines whose p-value does not count belong to runs all the same. Fewer than two points are a
// fault.
Result<Points> loadChromosome(AssociationFile& file, const QString& label);
