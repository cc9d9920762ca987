#pragma once

#include "quantile_plot.h"

#include <span>
#include <vector>

// Sorts -log10 p from the largest down, without those that are below 0, infinite or no number.
std::vector<double> rankedValues(std::span<const double> values);

// Where 95 of 100 values of each rank lie if nothing but chance is at work: by ranks from 1 on that
// lie so close on a logarithmic scale that a line through them looks smooth.
std::vector<QuantileBand> quantileBand(size_t count);
