#include "decoders.h"

#include <QtEndian>
#include <zstd.h>

namespace {

struct FreeContext {
    void operator()(ZSTD_DCtx* context) const { ZSTD_freeDCtx(context); }
};

class ZstdDecoder : public Decoder {
public:
    using Decoder::Decoder;

    QString packing() const override { return QStringLiteral("zstd"); }
    qint64 decode(char* data, qint64 maxSize) override;

private:
    std::unique_ptr<ZSTD_DCtx, FreeContext> m_context{ZSTD_createDCtx()};
    bool m_isInFrame = false;
};

qint64 ZstdDecoder::decode(char* data, qint64 maxSize) {
    ZSTD_outBuffer out{data, static_cast<size_t>(maxSize), 0};
    while (out.pos == 0) {
        if (!input().fill(1))
            return -1;
        const QByteArrayView bytes = input().bytes();
        if (bytes.isEmpty() && !m_isInFrame)
            return 0;
        ZSTD_inBuffer in{bytes.data(), static_cast<size_t>(bytes.size()), 0};
        const size_t rest = ZSTD_decompressStream(m_context.get(), &out, &in);
        input().take(static_cast<qsizetype>(in.pos));
        if (ZSTD_isError(rest))
            return corrupt(QString::fromLatin1(ZSTD_getErrorName(rest)));
        m_isInFrame = rest != 0;
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
