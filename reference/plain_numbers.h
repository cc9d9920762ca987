#pragma once

#include <cstdint>
#include <limits>

// Defined results where positions and scales leave the range of an int.
namespace plain {

// The number modulo 2^32, as two's complement arithmetic gives it.
constexpr int wrapped(std::int64_t number) {
    return static_cast<int>(static_cast<std::uint32_t>(number));
}

constexpr int difference(int a, int b) {
    return wrapped(std::int64_t(a) - b);
}

// Truncated toward zero; the lowest int for NaN and for whatever an int cannot hold.
constexpr int truncated(double number) {
    const bool fits = number > -2147483649.0 && number < 2147483648.0; // false for NaN
    return fits ? static_cast<int>(number) : std::numeric_limits<int>::min();
}

} // namespace plain
