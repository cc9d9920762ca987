#pragma once

#include "genome_scan.h"
#include "plot_geometry.h"

#include <QImage>

// Paints some text, so that Qt's search for fonts, which the window does at its start, is not
// timed.
void loadFonts();

// Plots of the size they have in the window, by the program's painter and by the reference's.

PlotGeometry geometryOf(const Points& points);

QImage quickGenome(const GenomeScan& scan);
QImage plainGenome(const GenomeScan& scan);

enum class Join { No, Yes };
QImage quickChromosome(const Points& points, Join join);
QImage plainChromosome(const Points& points, Join join);
