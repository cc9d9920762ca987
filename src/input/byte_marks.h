#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// A bit for each byte of a block of 64, the first byte's bit the lowest.
struct ByteMarks {
    static constexpr size_t blockSize = 64;

    uint64_t fieldEnds = 0; // the byte is the delimiter or a line feed
    uint64_t lineEnds = 0;  // the byte is a line feed
};

// Marks every block of the text, with the machine's widest vectors. The last block is read whole,
// so up to 63 bytes behind the text; bits there are not set.
void markBytes(std::string_view text, char delimiter, std::vector<ByteMarks>& marks);
