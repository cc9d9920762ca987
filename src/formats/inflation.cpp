#include "inflation.h"

#include "p_value.h"

#include <algorithm>
#include <bit>
#include <boost/math/distributions/chi_squared.hpp>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
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

// The leading bits of a number that is not negative, which sort as numbers do.
size_t binOf(double value) {
    constexpr int dropped = 48;
    return std::bit_cast<std::uint64_t>(value + 0.0) >> dropped; // -0.0 becomes 0.0
}

constexpr size_t binCount = 1U << 15U;

// The two in the middle of the order, or twice the only one. Only the bins that hold them are
// ordered.
std::pair<double, double> middleTwo(const std::vector<double>& values) {
    std::vector<size_t> counts(binCount);
    for (const double value : values)
        ++counts[binOf(value)];
    const size_t lower = (values.size() - 1) / 2, upper = values.size() / 2;
    size_t first = 0, below = 0; // the bin of the lower one, and how many values are before it
    while (below + counts[first] <= lower)
        below += counts[first++];
    size_t last = first;
    for (size_t end = below + counts[first]; end <= upper; end += counts[last])
        ++last;
    std::vector<double> around;
    for (const double value : values)
        if (const size_t bin = binOf(value); bin >= first && bin <= last)
            around.push_back(value);
    const auto at = around.begin() + static_cast<std::ptrdiff_t>(lower - below);
    std::nth_element(around.begin(), at, around.end());
    return {*at, upper == lower ? *at : *std::min_element(at + 1, around.end())};
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

std::optional<double> genomicInflation(const std::vector<double>& negLog10) {
    if (negLog10.empty())
        return std::nullopt;
    const auto [lower, upper] = middleTwo(negLog10);
    return (chiSquareOf(lower) + chiSquareOf(upper)) / 2 / chiSquareOf(std::log10(2.0));
}
