#include "decoders.h"

#include <QIODevice>
#include <algorithm>
#include <cstring>

namespace {

constexpr qsizetype bufferSize = 256 * 1024;

class PlainDecoder : public Decoder {
public:
    using Decoder::Decoder;

    QString packing() const override { return QStringLiteral("plain"); }

    qint64 decode(char* data, qint64 maxSize) override {
        if (input().available() == 0)
            return input().readThrough(data, maxSize);
        const qsizetype count = std::min<qsizetype>(input().available(), maxSize);
        std::memcpy(data, input().bytes().data(), static_cast<size_t>(count));
        input().take(count);
        return count;
    }

    bool skip(qint64 count) override {
        return input().available() == 0 && input().skipThrough(count);
    }
};

} // namespace

PackedInput::PackedInput(QIODevice& device)
    : m_device(device), m_buffer(bufferSize, Qt::Uninitialized) {}

bool PackedInput::fill(qsizetype count) {
    if (available() >= count)
        return true;
    std::memmove(m_buffer.data(), m_buffer.constData() + m_taken, static_cast<size_t>(available()));
    m_filled = available();
    m_taken = 0;
    qint64 got = 1;
    while (m_filled < count && got > 0) {
        got = readThrough(m_buffer.data() + m_filled, m_buffer.size() - m_filled);
        m_filled += static_cast<qsizetype>(std::max<qint64>(got, 0));
    }
    return got >= 0;
}

bool PackedInput::skipThrough(qint64 count) {
    if (m_device.isSequential() || !m_device.seek(m_device.pos() + count))
        return false;
    m_bytesRead += count;
    return true;
}

qint64 PackedInput::readThrough(char* data, qint64 maxSize) {
    const qint64 got = m_device.read(data, maxSize);
    if (got < 0)
        m_error = m_device.errorString();
    else
        m_bytesRead += got;
    return got;
}

qint64 Decoder::cutShort() {
    m_damage = QStringLiteral("the %1 data end early, after %2 bytes: the file was cut short")
                   .arg(packing())
                   .arg(m_input.bytesTaken());
    return -1;
}

qint64 Decoder::corrupt(const QString& what) {
    m_damage = QStringLiteral("the %1 data are corrupt near byte %2: %3")
                   .arg(packing())
                   .arg(m_input.bytesTaken())
                   .arg(what);
    return -1;
}

std::unique_ptr<Decoder> plainDecoder(PackedInput& input) {
    return std::make_unique<PlainDecoder>(input);
}
