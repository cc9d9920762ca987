#pragma once

#include "genome_scan.h"
#include "plot_painter.h"

#include <QImage>

// Paints some text, so that Qt's search for fonts, which the window does at its start, is not
// timed.
void loadFonts();

// Plots of the size they have in the window, by the program's painter or by that in namespace
// plain.
PlotGeometry geometryOf(const Points& points);

QImage genomeImage(decltype(paintGenome) paint, const GenomeScan& scan);

enum class Join { No, Yes };
QImage chromosomeImage(decltype(paintChromosome) paint, const Points& points, Join join);
