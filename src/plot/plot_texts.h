#pragma once

#include <QString>

// The texts on and about the plots.

// A range of positions that the chromosome plot marks; both ends belong to it.
struct PositionRange {
    int low = 0;
    int high = 0;

    bool contains(int position) const { return low <= position && position <= high; }
};

// The range that two texts of the user's give: "1000-2000" in the first alone, or a number in each.
// What is no number gives 0 to 0.
PositionRange highlightRange(const QString& first, const QString& second);

// The number's digits in threes with commas between, from the right. A minus sign is counted like a
// digit, so -123 is "-,123".
QString groupedInThrees(int number);

// The length of a range between two arrows: "|<-- 150,000 -->|".
QString spanText(int first, int last);

// A file's name in a plot's title: without its folder, at most the first bytes of it in the local
// 8-bit encoding, so that a character may be cut.
inline constexpr qsizetype titleNameBytes = 30;
QString titleName(const QString& path);

// A -log10 p with six significant digits.
QString valueText(double value);
