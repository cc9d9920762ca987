#pragma once

#include <optional>
#include <string_view>

// The numbers that a field's text (UTF-8) stands for, exactly as QString::toInt and
// QString::toDouble tell them: blanks around, signs, infinities, not-a-number, underflow and
// overflow included. Plain digits are converted here, many times faster; every other text is handed
// to the toolkit. Nothing is returned for a text that is no number, or none that the type can hold.

std::optional<int> toInteger(std::string_view field);
std::optional<double> toReal(std::string_view field);

// The same where every nanosecond counts: true, and the number, or false. To put a number into an
// optional and to take it out of there again takes as long as to convert it.
bool readInteger(std::string_view field, int& number);
bool readReal(std::string_view field, double& number);
