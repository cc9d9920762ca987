#pragma once

// Positions come from files and scales from them, so any int can meet any other here. The sums wrap
// around as two's complement does instead of being undefined, and a number that no int can hold has
// one defined result.

// `number` without its fraction; the lowest int for what does not fit, infinities and not-a-number.
constexpr int truncated(double number) {
    constexpr double tooLow = -2147483649.0, tooHigh = 2147483648.0, lowest = -2147483648.0;
    // Chosen before it is converted: so compilers do it for several numbers at once.
    return static_cast<int>(number > tooLow && number < tooHigh ? number : lowest);
}

constexpr int wrappedSum(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

constexpr int wrappedDifference(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}
