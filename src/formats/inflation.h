#pragma once

#include <optional>
#include <span>

// The chi-square statistic, with one degree of freedom, of a p-value given as -log10 p (0 or more),
// also below the smallest double.
double chiSquareOf(double negLog10);

// Genomic inflation, lambda: the median chi-square statistic of these p-values over the one
// expected without any association. The values are -log10 p, 0 or more, in any order; the median of
// an even number is the mean of the middle two statistics. Nothing without values.
std::optional<double> genomicInflation(std::span<const double> negLog10);
