#pragma once

#include "chromosome.h"
#include "plot_geometry.h"
#include "plot_texts.h"
#include "point_labels.h"

#include <QImage>
#include <QList>
#include <span>

class QPaintDevice;

// Both plots are painted on white and without antialiasing. An image without size is null. A point
// whose value is not a number is left out. The geometry is that of the points painted.

// The points to paint; both spans have the same length.
struct PlotPoints {
    std::span<const int> positions;
    std::span<const double> values;
};

struct GenomePlot {
    QString title;
    QList<Chromosome> chromosomes; // at least one
    bool referenceLines = false;
    QList<PointLabel> labels = {};
};

// All chromosomes side by side, a dot for each point, named along the bottom.
QImage paintGenome(const PlotGeometry& geometry, PlotPoints points, const GenomePlot& plot);

// The same on a page with the geometry's size in dots: letters and lines as such, the points as one
// image. False, with nothing drawn, where there is no memory for that image.
bool printGenome(QPaintDevice& page, const PlotGeometry& geometry, PlotPoints points,
                 const GenomePlot& plot);

struct ChromosomePlot {
    PositionRange highlight;
    bool joined = false; // segments between neighbouring points instead of dots
    bool referenceLines = false;
    QList<PointLabel> labels = {};
};

// One chromosome's points with the position scale at the bottom; "no points" where there are none.
QImage paintChromosome(const PlotGeometry& geometry, PlotPoints points, const ChromosomePlot& plot);
bool printChromosome(QPaintDevice& page, const PlotGeometry& geometry, PlotPoints points,
                     const ChromosomePlot& plot);
