#include "unpacked.h"

#include "code_units.h"
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

bool hasReturnsAlone(QByteArrayView head, const CodeUnits& units) {
    const auto width = static_cast<qsizetype>(units.width);
    bool hasReturns = false;
    for (qsizetype at = 0; at + width <= head.size(); at += width) {
        if (units.isAt(head.data() + at, '\n'))
            return false;
        hasReturns = hasReturns || units.isAt(head.data() + at, '\r');
    }
    return hasReturns;
}

// How many bytes more say whether a line feed follows a carriage return at the end.
qsizetype bytesMissing(QByteArrayView head) {
    const CodeUnits units = codeUnitsOf(head);
    const auto width = static_cast<qsizetype>(units.width);
    if (const qsizetype part = head.size() % width; part > 0)
        return width - part;
    return units.isAt(head.data() + head.size() - width, '\r') ? width : 0;
}

} // namespace

struct UnpackedDevice::Implementation {
    Implementation(QIODevice& packed, LineEnds lineEnds)
        : isUnified(lineEnds == LineEnds::Unified), input(packed) {}

    bool fillHead();
    qint64 takeHead(char* data, qint64 maxSize); // `data` is null to drop them
    qint64 decode(char* data, qint64 maxSize);
    qint64 read(char* data, qint64 maxSize) {
        return head.isEmpty() ? decode(data, maxSize) : takeHead(data, maxSize);
    }

    // The same with line feeds for returns.
    qint64 readUnified(char* data, qint64 maxSize);
    qint64 fillAhead();
    bool areUnitsUnified() const { return isUnified && isReturnLineEnd && units.width > 1; }

    const bool isUnified;
    PackedInput input;
    std::unique_ptr<Decoder> decoder;
    QByteArray head; // the first unpacked bytes
    qsizetype headTaken = 0;
    bool isHeadFilled = false;
    CodeUnits units;
    QByteArray ahead; // whole characters of several bytes, and perhaps a part of one
    qsizetype aheadReady = 0, aheadTaken = 0;
    bool isReturnLineEnd = false;
    bool hasFailed = false;
};

// Unpacks the first bytes, and goes on while a carriage return is the last of them: a line feed may
// follow it. An error is kept for the read that comes to it.
bool UnpackedDevice::Implementation::fillHead() {
    isHeadFilled = true;
    qsizetype size = 0;
    qint64 count = 1;
    for (qsizetype missing = headSize; count > 0 && missing > 0;) {
        head.resize(size + missing);
        count = decoder->decode(head.data() + size, missing);
        size += static_cast<qsizetype>(std::max<qint64>(count, 0));
        missing =
            size < headSize ? headSize - size : bytesMissing(QByteArrayView(head).first(size));
    }
    head.resize(size);
    hasFailed = count < 0;
    units = codeUnitsOf(head);
    isReturnLineEnd = hasReturnsAlone(head, units);
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

// Reads some bytes behind the part of a character that is left. Its bytes may come in two reads.
qint64 UnpackedDevice::Implementation::fillAhead() {
    const auto width = static_cast<qsizetype>(units.width);
    ahead.remove(0, aheadReady);
    const qsizetype part = ahead.size();
    ahead.resize(part + headSize);
    const qint64 count = read(ahead.data() + part, headSize);
    ahead.resize(part + static_cast<qsizetype>(std::max<qint64>(count, 0)));
    aheadReady = count > 0 ? ahead.size() / width * width : ahead.size();
    aheadTaken = 0;
    for (qsizetype at = 0; at + width <= aheadReady; at += width)
        if (units.isAt(ahead.constData() + at, '\r'))
            ahead[at + static_cast<qsizetype>(units.low)] = '\n';
    return count;
}

qint64 UnpackedDevice::Implementation::readUnified(char* data, qint64 maxSize) {
    if (!areUnitsUnified()) {
        const qint64 count = read(data, maxSize);
        std::replace(data, data + std::max<qint64>(count, 0), '\r', '\n');
        return count;
    }
    qint64 got = 1;
    while (aheadTaken == aheadReady && got > 0)
        got = fillAhead();
    if (aheadTaken == aheadReady)
        return got;
    const qsizetype count = std::min<qsizetype>(aheadReady - aheadTaken, maxSize);
    std::memcpy(data, ahead.constData() + aheadTaken, static_cast<size_t>(count));
    aheadTaken += count;
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
    if (m->areUnitsUnified())
        return QIODevice::skipData(maxSize);
    if (!m->head.isEmpty())
        return m->takeHead(nullptr, maxSize);
    const bool isSkipped = m->isHeadFilled && !m->hasFailed && m->decoder->skip(maxSize);
    return isSkipped ? maxSize : QIODevice::skipData(maxSize);
}

qint64 UnpackedDevice::readData(char* data, qint64 maxSize) {
    if (!m->isHeadFilled)
        m->fillHead();
    const bool areReplaced = m->isUnified && m->isReturnLineEnd;
    const qint64 count = areReplaced ? m->readUnified(data, maxSize) : m->read(data, maxSize);
    if (count < 0)
        setErrorString(m->decoder->error());
    return count;
}
