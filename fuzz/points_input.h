#pragma once

#include "input.h"
#include "points.h"

#include <limits>

// Points from a fuzzer's input. Random bits are mostly tiny or huge numbers, so the first byte of
// each number selects how the rest is decoded.
inline double valueFrom(Input& input) {
    switch (input.below(8)) {
    case 0:
        return input.number<double>();
    case 1:
        return std::numeric_limits<double>::quiet_NaN();
    case 2:
        return input.flag() ? std::numeric_limits<double>::infinity()
                            : -std::numeric_limits<double>::infinity();
    case 3:
        return input.number<std::int16_t>();
    default:
        return input.number<std::uint16_t>() / 1024.0;
    }
}

inline int positionFrom(Input& input) {
    switch (input.below(4)) {
    case 0:
        return input.number<std::int32_t>();
    case 1:
        return input.number<std::uint8_t>();
    default:
        return input.number<std::uint16_t>();
    }
}

inline Points pointsFrom(Input& input, int most) {
    Points points;
    while (!input.isAtEnd() && points.positions.size() < most) {
        points.positions.append(positionFrom(input));
        points.values.append(valueFrom(input));
    }
    return points;
}
