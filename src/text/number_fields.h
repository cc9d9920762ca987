#pragma once

#include <optional>
#include <string_view>

// Parses a UTF-8 field exactly as QString::toInt and QString::toDouble do: the same texts are
// numbers, with the same value to the last bit. That holds for surrounding spaces, signs,
// infinities, not-a-number, underflow and overflow too.

// False, with `number` unspecified, if the text is no number or the type cannot hold it.
bool readInteger(std::string_view field, int& number);
bool readReal(std::string_view field, double& number);

// The same as optionals, which cost too much in the reading loop: nothing if the text is no number.
std::optional<int> toInteger(std::string_view field);
std::optional<double> toReal(std::string_view field);

// The plain numbers among them, which are converted many times faster than the rest. Nothing for a
// text that is left to Qt, whether or not it is a number. A plain integer is digits, perhaps after
// a minus sign. A plain real is digits, perhaps with a point and an exponent, in at most 100
// characters; its value is normal, or a zero such as 0.0000.
std::optional<int> plainInteger(std::string_view field);
std::optional<double> plainReal(std::string_view field);
