#pragma once

// The longest text that writeNumber() writes is "-1.23457e-308"; it may overwrite what follows.
inline constexpr int numberTextRoom = 16;

// Writes the number at `at` as QTextStream does: at most six significant digits, in the shorter of
// fixed and scientific notation, without a terminating zero. There must be room for
// numberTextRoom characters. Returns the end of the text.
char* writeNumber(double number, char* at);
