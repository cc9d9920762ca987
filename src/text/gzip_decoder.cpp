#include "decoders.h"

#include <algorithm>
#include <cstring>
#include <isa-l/igzip_lib.h>
#include <limits>

namespace {

constexpr qsizetype headerSize = 12; // with the length of the extra field, where there is one
constexpr qsizetype subfieldSize = 4;
constexpr const char* noGzipData = "what follows is not gzip data";

qsizetype lengthAt(QByteArrayView bytes, qsizetype at) {
    return static_cast<uchar>(bytes[at]) + 256 * static_cast<uchar>(bytes[at + 1]);
}

// bgzip states the size of each block in a subfield BC.
bool hasBlockSize(QByteArrayView extra) {
    while (extra.size() >= subfieldSize) {
        const qsizetype length = lengthAt(extra, 2);
        if (extra.startsWith("BC") && length == 2)
            return true;
        extra = extra.sliced(std::min(subfieldSize + length, extra.size()));
    }
    return false;
}

const char* meaningOf(int error) {
    switch (error) {
    case ISAL_INCORRECT_CHECKSUM:
        return "the checksum is wrong";
    case ISAL_INVALID_WRAPPER:
    case ISAL_UNSUPPORTED_METHOD:
        return noGzipData;
    default:
        return "the compressed data cannot be decoded";
    }
}

// A gzip file is a sequence of members. bgzip makes one of each block, and an empty one at the end.
class GzipDecoder : public Decoder {
public:
    explicit GzipDecoder(PackedInput& input);

    QString packing() const override {
        return m_isBgzip ? QStringLiteral("bgzip") : QStringLiteral("gzip");
    }
    qint64 decode(char* data, qint64 maxSize) override;

private:
    enum class Start { Member, End, Failure };

    Start startMember();
    Start checkEnd();
    Start skipPadding();
    Start failed(const char* what);
    Start readHeader();
    bool startsBlock();
    qint64 inflate(char* data, qint64 maxSize);
    qint64 takeLastText(char* data, qint64 maxSize);

    bool m_isFirst = true;
    bool m_isInMember = false;
    bool m_isBgzip = false;       // the first member is a block of bgzip
    bool m_isBlock = false;       // this member is
    bool m_isEmpty = true;        // this member has held no data so far
    int m_error = ISAL_DECOMP_OK; // reported once the text before it is returned
    isal_gzip_header m_header;
    inflate_state m_state = {}; // the library reads more of its tables than it has written
};

GzipDecoder::GzipDecoder(PackedInput& input) : Decoder(input) {
    isal_inflate_init(&m_state);
    m_isBgzip = startsBlock();
}

qint64 GzipDecoder::decode(char* data, qint64 maxSize) {
    qint64 count = 0;
    while (count == 0) {
        if (const Start start = m_isInMember ? Start::Member : startMember();
            start != Start::Member)
            return start == Start::End ? 0 : -1;
        count = inflate(data, maxSize);
    }
    return count;
}

GzipDecoder::Start GzipDecoder::startMember() {
    if (!input().fill(2))
        return Start::Failure;
    const QByteArrayView bytes = input().bytes();
    if (bytes.isEmpty())
        return checkEnd();
    if (bytes[0] == '\0' && !m_isFirst)
        return skipPadding();
    if (!isGzip(bytes) && !QByteArrayView("\x1f\x8b").startsWith(bytes))
        return failed(noGzipData);
    m_isFirst = false;
    m_isBlock = startsBlock();
    m_isInMember = true;
    m_isEmpty = true;
    isal_inflate_reset(&m_state);
    return readHeader();
}

// Apart from the data: where the input ends inside a header, isal_inflate() forgets its flags.
GzipDecoder::Start GzipDecoder::readHeader() {
    m_header = {};
    isal_gzip_header_init(&m_header);
    int result = ISAL_END_INPUT;
    while (result == ISAL_END_INPUT) {
        if (!input().fill(1))
            return Start::Failure;
        const qsizetype available = input().available();
        m_state.next_in = reinterpret_cast<uint8_t*>(input().data());
        m_state.avail_in = static_cast<uint32_t>(available);
        result = isal_read_gzip_header(&m_state, &m_header);
        input().take(available - static_cast<qsizetype>(m_state.avail_in));
        if (result == ISAL_END_INPUT && available == 0) {
            cutShort();
            return Start::Failure;
        }
    }
    if (result != ISAL_DECOMP_OK)
        return failed(meaningOf(result));
    m_state.crc_flag = ISAL_GZIP_NO_HDR_VER; // what follows it is compared
    return Start::Member;
}

// True where a block of bgzip starts here.
bool GzipDecoder::startsBlock() {
    constexpr char hasExtra = 4;
    input().fill(headerSize);
    if (input().available() < headerSize || (input().bytes()[3] & hasExtra) == 0)
        return false;
    const qsizetype length = lengthAt(input().bytes(), headerSize - 2);
    input().fill(headerSize + length);
    const QByteArrayView rest = input().bytes().sliced(headerSize);
    return hasBlockSize(rest.first(std::min(length, rest.size())));
}

GzipDecoder::Start GzipDecoder::checkEnd() {
    if (!m_isBlock || m_isEmpty)
        return Start::End;
    cutShort();
    return Start::Failure;
}

GzipDecoder::Start GzipDecoder::failed(const char* what) {
    corrupt(QString::fromLatin1(what));
    return Start::Failure;
}

// Zeros may fill the space after the last member, on tapes for example.
GzipDecoder::Start GzipDecoder::skipPadding() {
    while (input().available() > 0) {
        const QByteArrayView bytes = input().bytes();
        const auto zeros =
            std::find_if(bytes.begin(), bytes.end(), [](char byte) { return byte; }) -
            bytes.begin();
        input().take(zeros);
        if (zeros < bytes.size())
            return failed(noGzipData);
        if (!input().fill(1))
            return Start::Failure;
    }
    return checkEnd();
}

// Unpacks some of this member. Returns 0 at its end.
qint64 GzipDecoder::inflate(char* data, qint64 maxSize) {
    constexpr qint64 most = std::numeric_limits<int>::max();
    qint64 count = 0;
    while (count == 0 && m_isInMember) {
        if (m_error != ISAL_DECOMP_OK)
            return takeLastText(data, maxSize);
        if (!input().fill(1))
            return -1;
        const qsizetype available = input().available();
        m_state.next_in = reinterpret_cast<uint8_t*>(input().data());
        m_state.avail_in = static_cast<uint32_t>(available);
        m_state.next_out = reinterpret_cast<uint8_t*>(data);
        m_state.avail_out = static_cast<uint32_t>(std::min(maxSize, most));
        m_error = isal_inflate(&m_state);
        input().take(available - static_cast<qsizetype>(m_state.avail_in));
        count = m_state.next_out - reinterpret_cast<uint8_t*>(data);
        m_isEmpty = m_isEmpty && count == 0;
        m_isInMember = m_error != ISAL_DECOMP_OK || m_state.block_state != ISAL_BLOCK_FINISH;
        if (m_error == ISAL_DECOMP_OK && m_isInMember && count == 0 && available == 0)
            return cutShort();
    }
    return count;
}

// After an error: what the library had unpacked ahead of the caller, and then the error.
qint64 GzipDecoder::takeLastText(char* data, qint64 maxSize) {
    const qint64 left = m_state.tmp_out_valid - m_state.tmp_out_processed;
    if (left == 0)
        return corrupt(QString::fromLatin1(meaningOf(m_error)));
    const auto count = static_cast<int>(std::min(left, maxSize));
    std::memcpy(data, m_state.tmp_out_buffer + m_state.tmp_out_processed,
                static_cast<size_t>(count));
    m_state.tmp_out_processed += count;
    return count;
}

} // namespace

bool isGzip(QByteArrayView start) {
    return start.startsWith("\x1f\x8b");
}

std::unique_ptr<Decoder> gzipDecoder(PackedInput& input) {
    return std::make_unique<GzipDecoder>(input);
}
