#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

class QIODevice;

// The bytes of a packed device, read in large blocks.
class PackedInput {
public:
    // `device` is open for reading and outlives this.
    explicit PackedInput(QIODevice& device);

    // Reads until `count` bytes are there, or all up to the end. False if the device cannot be
    // read.
    bool fill(qsizetype count);

    // The bytes that were read and not taken.
    QByteArrayView bytes() const { return QByteArrayView(m_buffer).sliced(m_taken, available()); }
    char* data() { return m_buffer.data() + m_taken; } // where they start
    qsizetype available() const { return m_filled - m_taken; }
    void take(qsizetype count) { m_taken += count; }

    // Skips bytes past the buffer, which must be empty. False where the device is sequential.
    bool skipThrough(qint64 count);

    // Reads past the buffer, which must be empty, as QIODevice::read() does.
    qint64 readThrough(char* data, qint64 maxSize);

    qint64 bytesRead() const { return m_bytesRead; }
    qint64 bytesTaken() const { return m_bytesRead - available(); }
    QString error() const { return m_error; } // empty while the device can be read

private:
    QIODevice& m_device;
    QByteArray m_buffer;
    qsizetype m_taken = 0;
    qsizetype m_filled = 0;
    qint64 m_bytesRead = 0;
    QString m_error;
};

// Unpacks one kind of packed data.
class Decoder {
public:
    explicit Decoder(PackedInput& input) : m_input(input) {}
    virtual ~Decoder() = default;

    virtual QString packing() const = 0;

    // Unpacks at least one byte, and at most `maxSize`, which is not 0. Returns 0 at the end, and
    // -1 if the data are damaged or the device cannot be read.
    virtual qint64 decode(char* data, qint64 maxSize) = 0;

    // Skips bytes without unpacking them. False, with nothing done, where that cannot be.
    virtual bool skip(qint64 /*count*/) { return false; }

    bool isDamaged() const { return !m_damage.isEmpty(); }
    QString error() const { return isDamaged() ? m_damage : m_input.error(); }

protected:
    PackedInput& input() { return m_input; }

    // What was wrong with the data, which end or are wrong here. Returns -1.
    qint64 cutShort();
    qint64 corrupt(const QString& what);

private:
    PackedInput& m_input;
    QString m_damage;
};

bool isGzip(QByteArrayView start);
bool isZstd(QByteArrayView start);

std::unique_ptr<Decoder> plainDecoder(PackedInput& input);
std::unique_ptr<Decoder> gzipDecoder(PackedInput& input);
std::unique_ptr<Decoder> zstdDecoder(PackedInput& input);
