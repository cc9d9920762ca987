#include "inflation.h"

#include "p_value.h"

#include <algorithm>
#include <boost/math/distributions/chi_squared.hpp>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace {

// Where p is no normal double, z is halved in on.
double largeZ(double negLog10) {
    double low = 0.0, high = std::sqrt(2.0 * std::numbers::ln10 * negLog10); // p < exp(-z^2 / 2)
    while (true) {
        const double middle = low + (high - low) / 2;
        if (middle <= low || middle >= high)
            return middle;
        (negLog10OfZ(middle) < negLog10 ? low : high) = middle;
    }
}

// The values at two neighbouring places of the order, of which the first is `lower`.
std::pair<double, double> atPlaces(std::vector<double>& values, size_t lower, size_t upper) {
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(lower);
    std::nth_element(values.begin(), at, values.end());
    return {*at, upper == lower ? *at : *std::min_element(at + 1, values.end())};
}

// The two in the middle of the order, or twice the only one. A sample tells about where they are,
// so that few values are put in order.
std::pair<double, double> middleTwo(std::span<const double> values) {
    constexpr size_t sampleSize = 16 * 1024;
    constexpr double margin = 0.02; // five standard errors of the sample's median
    std::vector<double> sample;
    for (size_t i = 0; i < values.size(); i += values.size() / sampleSize + 1)
        sample.push_back(values[i]);
    std::sort(sample.begin(), sample.end());
    const auto quantile = [&](double part) {
        return sample[static_cast<size_t>(part * static_cast<double>(sample.size()))];
    };
    const double low = quantile(0.5 - margin), high = quantile(0.5 + margin);
    // Branch-free: each value is copied, and kept where the next one does not overwrite it.
    size_t below = 0, kept = 0;
    std::vector<double> around;
    for (const double value : values) {
        if (kept == around.size())
            around.resize(2 * kept + sampleSize);
        around[kept] = value;
        below += static_cast<size_t>(value < low);
        kept += static_cast<size_t>(value >= low) & static_cast<size_t>(value <= high);
    }
    around.resize(kept);
    const size_t lower = (values.size() - 1) / 2, upper = values.size() / 2;
    if (below <= lower && upper < below + around.size())
        return atPlaces(around, lower - below, upper - below);
    around.assign(values.begin(), values.end()); // the sample was unlike the rest
    return atPlaces(around, lower, upper);
}

} // namespace

double chiSquareOf(double negLog10) {
    const double p = std::pow(10.0, -negLog10);
    if (p < DBL_MIN) {
        const double z = largeZ(negLog10);
        return z * z;
    }
    return quantile(complement(boost::math::chi_squared(1.0), std::min(p, 1.0)));
}

std::optional<double> genomicInflation(std::span<const double> negLog10) {
    if (negLog10.empty())
        return std::nullopt;
    const auto [lower, upper] = middleTwo(negLog10);
    return (chiSquareOf(lower) + chiSquareOf(upper)) / 2 / chiSquareOf(std::log10(2.0));
}
