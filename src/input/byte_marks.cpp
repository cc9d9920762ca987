// This file is compiled once for each kind of vectors that a machine may have.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "input/byte_marks.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "input/byte_marks.h"

#include <QtEndian>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// Lanes times bits, the first lane's bit the lowest.
template <typename Vector, typename Mask>
uint64_t bitsOf(Vector vector, Mask mask) {
    uint8_t bytes[8] = {};
    hn::StoreMaskBits(vector, mask, bytes);
    return qFromLittleEndian<quint64>(bytes);
}

void markBlocks(const uint8_t* text, size_t blocks, uint8_t delimiter, ByteMarks* marks) {
    const hn::CappedTag<uint8_t, ByteMarks::blockSize> vector;
    const auto delimiters = hn::Set(vector, delimiter);
    const auto lineFeeds = hn::Set(vector, static_cast<uint8_t>('\n'));
    for (size_t block = 0; block < blocks; ++block, text += ByteMarks::blockSize) {
        ByteMarks found;
        for (size_t i = 0; i < ByteMarks::blockSize; i += hn::Lanes(vector)) {
            const auto bytes = hn::LoadU(vector, text + i);
            const auto isLineEnd = hn::Eq(bytes, lineFeeds);
            const auto isFieldEnd = hn::Or(isLineEnd, hn::Eq(bytes, delimiters));
            found.lineEnds |= bitsOf(vector, isLineEnd) << i;
            found.fieldEnds |= bitsOf(vector, isFieldEnd) << i;
        }
        marks[block] = found;
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(markBlocks);

void markBytes(std::string_view text, char delimiter, std::vector<ByteMarks>& marks) {
    const size_t blocks = (text.size() + ByteMarks::blockSize - 1) / ByteMarks::blockSize;
    marks.resize(blocks);
    HWY_DYNAMIC_DISPATCH(markBlocks)
    (reinterpret_cast<const uint8_t*>(text.data()), blocks, static_cast<uint8_t>(delimiter),
     marks.data());
    if (const size_t rest = text.size() % ByteMarks::blockSize; rest != 0) {
        const uint64_t inText = (uint64_t{1} << rest) - 1;
        marks.back().fieldEnds &= inText;
        marks.back().lineEnds &= inText;
    }
}

#endif
