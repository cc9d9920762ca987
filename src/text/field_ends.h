#pragma once

#include <cstddef>

// Where the fields and the lines of a text end.
struct FieldEnds {
    size_t* fields; // offset of each delimiter and line feed
    size_t* lines;  // for each line feed, the number of fields up to it
    size_t fieldCount = 0;
    size_t lineCount = 0;
};

// Bytes that findFieldEnds() handles at a time.
constexpr size_t fieldBlockSize = 64;

// Appends the ends in text[from, to) to `ends`. `from` must be a multiple of fieldBlockSize. The
// last block is read in full, past `to`. Each array must have room for to - from + fieldBlockSize
// more entries; those past the new count are overwritten.
void findFieldEnds(const char* text, size_t from, size_t to, char delimiter, FieldEnds& ends);
