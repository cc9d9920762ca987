#include "quantiles.h"

#include <algorithm>
#include <boost/math/distributions/beta.hpp>
#include <cmath>
#include <hwy/contrib/sort/vqsort.h>

namespace {

using boost::math::complement;
using boost::math::quantile;

// The p-value of a rank among so many follows this distribution by chance.
QuantileBand bandAt(size_t rank, size_t count) {
    constexpr double tail = 0.025;
    const boost::math::beta_distribution<> p(static_cast<double>(rank),
                                             static_cast<double>(count - rank + 1));
    return {expectedNegLog10(rank, count), -std::log10(quantile(complement(p, tail))),
            -std::log10(quantile(p, tail))};
}

} // namespace

std::vector<double> rankedValues(std::span<const double> values) {
    std::vector<double> ranked;
    ranked.reserve(values.size());
    std::copy_if(values.begin(), values.end(), std::back_inserter(ranked),
                 [](double value) { return value >= 0.0 && std::isfinite(value); });
    hwy::Sorter()(ranked.data(), ranked.size(), hwy::SortDescending());
    return ranked;
}

std::vector<QuantileBand> quantileBand(size_t count) {
    constexpr double growth = 1.05;
    std::vector<QuantileBand> band;
    for (size_t rank = 1; rank <= count;
         rank = std::max(rank + 1, static_cast<size_t>(static_cast<double>(rank) * growth)))
        band.push_back(bandAt(rank, count));
    return band;
}
