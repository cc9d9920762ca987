#pragma once

#include "plot_painter.h"

#include <QImage>
#include <QString>
#include <QVector>

// The reference for both plots: one QPainter call for each point and each segment, in their order.
namespace plain {

QImage paintGenome(const PlotGeometry& geometry, PlotPoints points, const GenomePlot& plot);
QImage paintChromosome(const PlotGeometry& geometry, PlotPoints points, const ChromosomePlot& plot);

// The last chromosome that starts at or before the genome coordinate; the first if none does.
qsizetype chromosomeOf(int position, const QList<Chromosome>& chromosomes);

// Where two images first differ, and how; empty if nowhere.
QString pixelDifference(const QImage& image, const QImage& expected);

} // namespace plain
