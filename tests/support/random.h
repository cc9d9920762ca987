#pragma once

#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <random>

// Random numbers that come again with their seed. What is drawn from them is computed here, since
// the standard library's distributions differ between its makers.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_engine(seed) {}

    // From 0 to below `end`.
    int below(int end) { return static_cast<int>(m_engine() % static_cast<std::uint64_t>(end)); }
    int between(int first, int last) { return first + below(last - first + 1); }
    bool oneIn(int count) { return below(count) == 0; }
    double fraction() { return static_cast<double>(m_engine() >> 11) * 0x1p-53; }
    std::uint64_t bits() { return m_engine(); }

    template <typename Container>
    const auto& oneOf(const Container& container) {
        return std::begin(container)[below(static_cast<int>(std::size(container)))];
    }

    template <typename T>
    T oneOf(std::initializer_list<T> values) {
        return values.begin()[below(static_cast<int>(values.size()))];
    }

private:
    std::mt19937_64 m_engine;
};

// The seed of this run: PELMARK_SEED, or a fixed one. Printed, so that a failure can be had again.
std::uint64_t runSeed();

// How many random cases to run: PELMARK_RANDOM_CASES, or `usual`.
int randomCases(int usual);
