#pragma once

#include "genome_scan.h"
#include "plot_geometry.h"

#include <QImage>

// Plots of the size that they would have in the window, by the program's painter and by the plain
// one with its painter call for each point.
// Paints a first text, for which the toolkit looks for fonts: the window did so long before.
void loadFonts();

PlotGeometry geometryOf(const Points& points);

QImage quickGenome(const GenomeScan& scan);
QImage plainGenome(const GenomeScan& scan);

enum class Join { No, Yes };
QImage quickChromosome(const Points& points, Join join);
QImage plainChromosome(const Points& points, Join join);
