#pragma once

#include "table_format.h"

#include <string_view>

enum class PositionKind { Whole, Missing, Fractional, NotANumber };

// Reads a position. 1e+05 and 12345.0 are whole, and so is 1,234 where fields stand in quotes. Zero
// and negative numbers are whole too. `position` is set for a whole number; one that an int cannot
// hold becomes the nearest int.
PositionKind readPosition(std::string_view text, const TableFormat& format, int& position);
