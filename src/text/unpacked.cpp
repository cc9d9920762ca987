#include "unpacked.h"

#include "decoders.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr qsizetype headSize = 64 * 1024; // bytes that show how lines end
constexpr qsizetype magicSize = 4;

std::unique_ptr<Decoder> decoderFor(QByteArrayView start, PackedInput& input) {
    if (isGzip(start))
        return gzipDecoder(input);
    if (isZstd(start))
        return zstdDecoder(input);
    return plainDecoder(input);
}

bool hasReturnsAlone(QByteArrayView head) {
    return head.contains('\r') && !head.contains('\n');
}

} // namespace

struct UnpackedDevice::Implementation {
    Implementation(QIODevice& packed, LineEnds lineEnds)
        : isUnified(lineEnds == LineEnds::Unified), input(packed) {}

    bool fillHead();
    qint64 takeHead(char* data, qint64 maxSize); // `data` is null to drop them
    qint64 decode(char* data, qint64 maxSize);

    const bool isUnified;
    PackedInput input;
    std::unique_ptr<Decoder> decoder;
    QByteArray head; // the first unpacked bytes
    qsizetype headTaken = 0;
    bool isHeadFilled = false;
    bool isReturnLineEnd = false;
    bool hasFailed = false;
};

// Unpacks the first bytes, and goes on while a carriage return is the last of them: a line feed may
// follow it. An error is kept for the read that comes to it.
bool UnpackedDevice::Implementation::fillHead() {
    isHeadFilled = true;
    qsizetype size = 0;
    qint64 count = 1;
    head.resize(headSize);
    while (count > 0 && (size < headSize || head[size - 1] == '\r')) {
        head.resize(std::max(headSize, size + 1));
        count = decoder->decode(head.data() + size, head.size() - size);
        size += static_cast<qsizetype>(std::max<qint64>(count, 0));
    }
    head.resize(size);
    hasFailed = count < 0;
    isReturnLineEnd = hasReturnsAlone(head);
    return !hasFailed || size > 0;
}

qint64 UnpackedDevice::Implementation::takeHead(char* data, qint64 maxSize) {
    const qsizetype count = std::min<qsizetype>(head.size() - headTaken, maxSize);
    if (data != nullptr)
        std::memcpy(data, head.constData() + headTaken, static_cast<size_t>(count));
    headTaken += count;
    if (headTaken == head.size())
        head = QByteArray();
    return count;
}

qint64 UnpackedDevice::Implementation::decode(char* data, qint64 maxSize) {
    if (hasFailed)
        return -1;
    const qint64 count = decoder->decode(data, maxSize);
    hasFailed = count < 0;
    return count;
}

UnpackedDevice::UnpackedDevice(QIODevice& packed, LineEnds lineEnds)
    : m(std::make_unique<Implementation>(packed, lineEnds)) {}

UnpackedDevice::~UnpackedDevice() = default;

bool UnpackedDevice::open(OpenMode mode) {
    if (mode != ReadOnly)
        return false;
    if (!m->input.fill(magicSize)) {
        setErrorString(m->input.error());
        return false;
    }
    m->decoder = decoderFor(m->input.bytes(), m->input);
    return QIODevice::open(mode | Unbuffered); // the decoders have buffers of their own
}

QString UnpackedDevice::packing() const {
    return m->decoder ? m->decoder->packing() : QString();
}

QByteArrayView UnpackedDevice::start() {
    if (!m->isHeadFilled)
        m->fillHead();
    return m->head;
}

bool UnpackedDevice::endsLinesByReturn() const {
    return m->isReturnLineEnd;
}

bool UnpackedDevice::isDamaged() const {
    return m->decoder && m->decoder->isDamaged();
}

qint64 UnpackedDevice::packedBytesRead() const {
    return m->input.bytesRead();
}

qint64 UnpackedDevice::skipData(qint64 maxSize) {
    if (!m->head.isEmpty())
        return m->takeHead(nullptr, maxSize);
    const bool isSkipped = m->isHeadFilled && !m->hasFailed && m->decoder->skip(maxSize);
    return isSkipped ? maxSize : QIODevice::skipData(maxSize);
}

qint64 UnpackedDevice::readData(char* data, qint64 maxSize) {
    if (!m->isHeadFilled)
        m->fillHead();
    const qint64 count = m->head.isEmpty() ? m->decode(data, maxSize) : m->takeHead(data, maxSize);
    if (count < 0)
        setErrorString(m->decoder->error());
    else if (m->isReturnLineEnd && m->isUnified)
        std::replace(data, data + count, '\r', '\n');
    return count;
}
