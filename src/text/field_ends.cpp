// Highway compiles this file once for each vector instruction set and picks the best at run time.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "field_ends.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "field_ends.h"

#include <QtEndian>
#include <bit>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// One bit per byte of a block; the lowest stands for the first byte.
struct Marks {
    uint64_t fieldEnds = 0; // the byte is the delimiter or a line feed
    uint64_t lineEnds = 0;  // the byte is a line feed
};

template <typename Vector, typename Mask>
HWY_INLINE uint64_t bitsOf(Vector vector, Mask mask) {
    uint8_t bytes[8] = {};
    hn::StoreMaskBits(vector, mask, bytes);
    return qFromLittleEndian<quint64>(bytes);
}

HWY_INLINE Marks marksOf(const uint8_t* block, uint8_t delimiter) {
    const hn::CappedTag<uint8_t, fieldBlockSize> vector;
    const auto delimiters = hn::Set(vector, delimiter);
    const auto lineFeeds = hn::Set(vector, static_cast<uint8_t>('\n'));
    Marks marks;
    for (size_t i = 0; i < fieldBlockSize; i += hn::Lanes(vector)) {
        const auto bytes = hn::LoadU(vector, block + i);
        const auto isLineEnd = hn::Eq(bytes, lineFeeds);
        const auto isFieldEnd = hn::Or(isLineEnd, hn::Eq(bytes, delimiters));
        marks.lineEnds |= bitsOf(vector, isLineEnd) << i;
        marks.fieldEnds |= bitsOf(vector, isFieldEnd) << i;
    }
    return marks;
}

// Writes field ends four at a time, past the last one if need be: that mispredicts the end of the
// loop far less often than one at a time.
HWY_INLINE void listMarks(const Marks& marks, size_t block, FieldEnds& ends) {
    for (uint64_t rest = marks.lineEnds; rest != 0; rest &= rest - 1) {
        const uint64_t upToLineEnd = rest ^ (rest - 1);
        ends.lines[ends.lineCount++] =
            ends.fieldCount + static_cast<size_t>(std::popcount(marks.fieldEnds & upToLineEnd));
    }
    size_t* field = ends.fields + ends.fieldCount;
    for (uint64_t rest = marks.fieldEnds; rest != 0; field += 4) {
        for (size_t i = 0; i < 4; ++i) {
            field[i] = block + static_cast<size_t>(std::countr_zero(rest));
            rest &= rest - 1;
        }
    }
    ends.fieldCount += static_cast<size_t>(std::popcount(marks.fieldEnds));
}

void findEnds(const char* text, size_t from, size_t to, char delimiter, FieldEnds& ends) {
    for (size_t block = from; block < to; block += fieldBlockSize) {
        Marks marks = marksOf(reinterpret_cast<const uint8_t*>(text) + block,
                              static_cast<uint8_t>(delimiter));
        if (to - block < fieldBlockSize) {
            const uint64_t inText = (uint64_t{1} << (to - block)) - 1;
            marks.fieldEnds &= inText;
            marks.lineEnds &= inText;
        }
        listMarks(marks, block, ends);
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(findEnds);

void findFieldEnds(const char* text, size_t from, size_t to, char delimiter, FieldEnds& ends) {
    HWY_DYNAMIC_DISPATCH(findEnds)(text, from, to, delimiter, ends);
}

#endif
