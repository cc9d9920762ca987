#pragma once

#include "plot_painter.h"

#include <QImage>

// The second opinion on painting: one painter call for each point and each segment, in their order,
// every rule written out as one would tell it. Slow, and never part of the program.
namespace plain {

QImage paintGenome(const PlotGeometry& geometry, PlotPoints points, const GenomePlot& plot);
QImage paintChromosome(const PlotGeometry& geometry, PlotPoints points, const ChromosomePlot& plot);

} // namespace plain
