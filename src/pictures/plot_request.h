#pragma once

#include "plot_texts.h"

#include <QByteArray>
#include <QSize>
#include <optional>

constexpr int mostPixels = 32767; // each way, all that Qt paints on

enum class PictureFormat { Png, Pdf };

// What `plot` draws of a scan.
struct PlotRequest {
    bool asIs = false;                    // read as the window does
    std::optional<QByteArray> chromosome; // in UTF-8; without it the whole genome
    std::optional<PositionRange> range;   // zoom to it; base pairs
    std::optional<PositionRange> mark;
    bool joined = false;
    bool referenceLines = true;
    bool quantiles = false; // the quantile-quantile plot
    int labelledHits = 0;   // how many lead markers get their names
    QSize size;             // of the plot at 96 dots per inch, in pixels
    int magnification = 0;  // pixels for each of those; 0 for what suits the format

    bool isOfOneChromosome() const { return range || mark || joined; }
};
