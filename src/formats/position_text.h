#pragma once

#include "table_format.h"

#include <string_view>

enum class PositionKind { Whole, TooLarge, Missing, Fractional, NotANumber };

// Reads a position. 1e+05 and 12345.0 are whole, and so is 1,234 where fields stand in quotes. Zero
// and negative numbers are whole too; one too small for an int becomes the smallest int. `position`
// is set for a whole number.
PositionKind readPosition(std::string_view text, const TableFormat& format, int& position);
