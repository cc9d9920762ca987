#pragma once

// The most characters that one number takes: "-1.23457e-308".
inline constexpr int longestNumberText = 13;

// Writes a number as the toolkit's text stream does, with up to six significant digits, in the
// shorter of fixed and scientific form. There has to be room for longestNumberText characters.
// Returns the place behind the last one.
char* writeNumber(double number, char* at);
