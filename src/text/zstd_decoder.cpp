#include "decoders.h"

#include <QtEndian>
#include <algorithm>
#include <zstd.h>

namespace {

struct FreeContext {
    void operator()(ZSTD_DCtx* context) const { ZSTD_freeDCtx(context); }
};

constexpr size_t blockHeaderSize = 3; // bytes
constexpr size_t largestBlock = 128 * 1024;
constexpr size_t frameStartSize = 5; // as much as ZSTD_initDStream() asks for

// The library drops the text of the call that finds damage. So each call gets at most the rest of
// one block, whole, without the header of the next, and nothing while text of an earlier block is
// left to return: all text before the damage comes out, in reads of any size.
class ZstdDecoder : public Decoder {
public:
    using Decoder::Decoder;

    QString packing() const override { return QStringLiteral("zstd"); }
    qint64 decode(char* data, qint64 maxSize) override;

private:
    // What to feed, of the bytes that the library asks for: the rest of the block and, unless it is
    // the last one, the header of the next.
    static size_t withoutNextHeader(size_t asked) {
        return asked > blockHeaderSize ? asked - blockHeaderSize : asked;
    }

    std::unique_ptr<ZSTD_DCtx, FreeContext> m_context{ZSTD_createDCtx()};
    bool m_isInFrame = false;
    bool m_isTextLeft = false; // perhaps, of a block that was decoded
    size_t m_next = frameStartSize;
};

qint64 ZstdDecoder::decode(char* data, qint64 maxSize) {
    ZSTD_outBuffer out{data, static_cast<size_t>(maxSize), 0};
    while (out.pos == 0) {
        if (!input().fill(static_cast<qsizetype>(std::min(m_next, largestBlock))))
            return -1;
        const QByteArrayView bytes = input().bytes();
        if (bytes.isEmpty() && !m_isInFrame)
            return 0;
        const size_t size = std::min(m_next, static_cast<size_t>(bytes.size()));
        ZSTD_inBuffer in{bytes.data(), m_isTextLeft ? 0 : size, 0};
        const size_t rest = ZSTD_decompressStream(m_context.get(), &out, &in);
        input().take(static_cast<qsizetype>(in.pos));
        if (ZSTD_isError(rest))
            return corrupt(QString::fromLatin1(ZSTD_getErrorName(rest)));
        m_isInFrame = rest != 0;
        m_isTextLeft = m_isInFrame && out.pos == out.size;
        m_next = m_isInFrame ? withoutNextHeader(rest) : frameStartSize;
        if (bytes.isEmpty() && m_isInFrame && out.pos == 0)
            return cutShort();
    }
    return static_cast<qint64>(out.pos);
}

} // namespace

bool isZstd(QByteArrayView start) {
    if (start.size() < 4)
        return false;
    const auto magic = qFromLittleEndian<quint32>(start.data());
    return magic == ZSTD_MAGICNUMBER ||
           (magic & ZSTD_MAGIC_SKIPPABLE_MASK) == ZSTD_MAGIC_SKIPPABLE_START;
}

std::unique_ptr<Decoder> zstdDecoder(PackedInput& input) {
    return std::make_unique<ZstdDecoder>(input);
}
