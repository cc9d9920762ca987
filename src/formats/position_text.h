#pragma once

#include "table_format.h"

#include <QByteArray>
#include <string_view>

enum class PositionKind { Whole, TooLarge, Missing, Fractional, NotANumber };

// 1,234,567: groups of three digits after the first.
bool isGrouped(const QByteArray& text);

// Reads a position. 1e+05 and 12345.0 are whole, and so is 1,234 where fields stand in quotes and
// no comma is a decimal point; elsewhere it is no number. Zero and negative numbers are whole too;
// one too small for an int becomes the smallest int. `position` is set for a whole number.
PositionKind readPosition(std::string_view text, const TableFormat& format, int& position);
