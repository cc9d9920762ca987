#pragma once

#include "points.h"

#include <QString>

// The program's table of points as the toolkit's text stream writes it, number by number.
bool saveByTextStream(const QString& fileName, const Points& points, const QString& label);
