#pragma once

#include "plot_geometry.h"

#include <QImage>
#include <QString>
#include <span>
#include <vector>

class QPaintDevice;

// Where the -log10 p of a rank may lie by chance.
struct QuantileBand {
    double expected = 0.0; // -log10 p
    double low = 0.0;
    double high = 0.0;
};

// Observed against expected -log10 p. The geometry gives size and magnification alone.
struct QuantilePlot {
    QString title;
    std::span<const double> observed;   // -log10 p, from the largest down; two at least, all finite
    std::span<const QuantileBand> band; // from the largest expected value down, to almost 0
};

// The -log10 p that is expected at a rank, from 1 for the largest, among so many.
double expectedNegLog10(size_t rank, size_t count);

// The markers as dots, the diagonal, the band, and both axes with their scales. On a page the dots
// are one image and all else as such; false, with nothing drawn, where there is no memory for it.
QImage paintQuantiles(const PlotGeometry& geometry, const QuantilePlot& plot);
bool printQuantiles(QPaintDevice& page, const PlotGeometry& geometry, const QuantilePlot& plot);
