#pragma once

#include <cstddef>

// Where the fields and the lines of a stretch of text end.
struct FieldEnds {
    size_t* fields; // receives the offset of each delimiter and line feed
    size_t* lines;  // receives, for each line feed, the number of fields up to it
    size_t fieldCount = 0;
    size_t lineCount = 0;
};

// What findFieldEnds() looks at in one go, and how far beyond what it counts it may write.
constexpr size_t fieldBlockSize = 64;

// Appends the ends in text[from, to) to `ends`. `from` is a multiple of fieldBlockSize; the last
// block is read whole, whatever it holds behind `to`. Each array needs room for to - from more
// entries and another fieldBlockSize. Uses the machine's widest vectors.
void findFieldEnds(const char* text, size_t from, size_t to, char delimiter, FieldEnds& ends);
