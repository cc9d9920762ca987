#include "text_blocks.h"

#include "utf8.h"

#include <QIODevice>
#include <algorithm>
#include <cstring>

namespace {

// QTextStream decodes this many bytes at a time. Invalid bytes can decode differently in other
// steps.
constexpr qsizetype decodingStep = 16 * 1024;
constexpr qsizetype longestByteOrderMark = 4;
constexpr char utf8Mark[] = "\xEF\xBB\xBF";

bool isWide(QStringConverter::Encoding encoding) {
    return encoding != QStringConverter::Utf8 && encoding != QStringConverter::System;
}

// Every byte of a file passes through this loop; compilers vectorize it.
bool isAscii(QByteArrayView bytes) {
    unsigned char all = 0;
    for (const char byte : bytes)
        all |= static_cast<unsigned char>(byte);
    return all < 0x80;
}

char* nextCarriageReturn(char* from, char* end) {
    void* const found = std::memchr(from, '\r', static_cast<size_t>(end - from));
    return found ? static_cast<char*>(found) : end;
}

qsizetype toNextStep(qint64 offset) {
    return (decodingStep - static_cast<qsizetype>(offset % decodingStep)) % decodingStep;
}

} // namespace

// In stretches whose count a byte holds, which lets compilers count many at once.
qint64 lineFeeds(std::string_view text) {
    constexpr size_t stretch = 128;
    const auto isFeed = [](char byte) { return static_cast<unsigned char>(byte == '\n' ? 1 : 0); };
    qint64 total = 0;
    for (; text.size() >= stretch; text.remove_prefix(stretch)) {
        unsigned char count = 0;
        for (size_t i = 0; i < stretch; ++i)
            count = static_cast<unsigned char>(count + isFeed(text[i]));
        total += count;
    }
    return total + std::count(text.begin(), text.end(), '\n');
}

TextBlocks::TextBlocks(QIODevice& device, qsizetype blockSize, Unmarked unmarked)
    : m_device(device), m_blockSize(blockSize), m_unmarked(unmarked) {}

bool TextBlocks::next() {
    // The unfinished line moves to the front. Blocks grow with it, so that a long line is read in
    // linear time.
    m_textSize -= m_pieceSize;
    std::memmove(m_text.data(), m_text.constData() + m_pieceSize, static_cast<size_t>(m_textSize));
    m_pieceSize = 0;
    m_isWhole = m_isWhole || m_textSize == 0;
    while (m_pieceSize == 0 && readBlock(std::max(m_blockSize, m_textSize))) {
    }
    if (m_pieceSize == 0 && !m_failed)
        m_pieceSize = m_textSize;
    return m_pieceSize > 0;
}

void TextBlocks::skipTo(qint64 byte) {
    while (m_bytesRead < byte && !m_atEnd) {
        const qint64 skipped = m_device.skip(byte - m_bytesRead);
        m_failed = skipped < 0;
        m_atEnd = skipped <= 0;
        m_bytesRead += std::max<qint64>(skipped, 0);
    }
    m_textSize = m_pieceSize = 0;
    m_isWhole = true;
}

// Reads a block and ends the piece after its last line feed, if it has one. False at the end.
bool TextBlocks::readBlock(qsizetype size) {
    m_text.resize(m_textSize);
    const bool isFirst = m_bytesRead == 0;
    if (!readBytes(size))
        return false;
    if (isFirst)
        detectEncoding();
    if (m_isAsItIs ||
        (!m_isWide && m_decodedToEnd && isAscii(QByteArrayView(m_text).sliced(m_textSize))))
        dropCarriageReturns();
    else
        decodeBlock();
    const qsizetype lineEnd = QByteArrayView(m_text).sliced(m_textSize).lastIndexOf('\n');
    if (lineEnd >= 0)
        m_pieceSize = m_textSize + lineEnd + 1;
    m_textSize = m_text.size();
    m_text.resize(m_textSize + padding);
    return true;
}

// Appends `size` raw bytes, fewer only at the end. False if there were none.
bool TextBlocks::readBytes(qsizetype size) {
    const qsizetype start = m_text.size();
    m_text.resize(start + size);
    qsizetype count = 0;
    while (count < size && !m_atEnd) {
        const qint64 got = m_device.read(m_text.data() + start + count, size - count);
        m_failed = got < 0;
        m_atEnd = got <= 0;
        count += m_atEnd ? 0 : static_cast<qsizetype>(got);
    }
    m_text.resize(start + count);
    m_bytesRead += count;
    return count > 0;
}

void TextBlocks::detectEncoding() {
    const qsizetype known = m_text.size() - m_textSize;
    readBytes(std::max<qsizetype>(longestByteOrderMark - known, 0));
    const auto marked =
        QStringConverter::encodingForData(QByteArrayView(m_text).sliced(m_textSize));
    const QStringConverter::Encoding encoding = marked.value_or(QStringConverter::System);
    m_isWide = isWide(encoding);
    m_isAsItIs = m_unmarked == Unmarked::AsTheyAre && !m_isWide;
    if (m_isAsItIs && marked)
        m_text.remove(m_textSize, qsizetype(QByteArrayView(utf8Mark).size()));
    m_decoder.emplace(encoding);
}

void TextBlocks::dropCarriageReturns() {
    char* const end = m_text.data() + m_text.size();
    char* to = nextCarriageReturn(m_text.data() + m_textSize, end);
    for (char* from = to; from != end;) {
        char* const afterReturn = from + 1;
        from = nextCarriageReturn(afterReturn, end);
        to = std::copy(afterReturn, from, to);
    }
    m_isWhole = m_isWhole && to == end;
    m_text.resize(to - m_text.data());
}

// Decodes the block, first extended to the end of a decoding step. ASCII from the start of its
// first step may already have been taken as it is.
void TextBlocks::decodeBlock() {
    readBytes(toNextStep(m_bytesRead));
    const QByteArray block = m_text.sliced(m_textSize);
    m_text.resize(m_textSize);
    const qint64 start = m_bytesRead - block.size();
    // The decoder has not seen the ASCII before this block. Feed it one character, so that it does
    // not drop a byte-order mark here as if at the start of the file.
    if (start > 0 && m_decodedToEnd && !m_isWide)
        static_cast<void>(QString(m_decoder->decode("x")));
    for (qsizetype from = 0, step = 0; from < block.size(); from += step) {
        step = std::min(decodingStep - static_cast<qsizetype>((start + from) % decodingStep),
                        block.size() - from);
        QString text = m_decoder->decode(QByteArrayView(block).sliced(from, step));
        text.remove(u'\r');
        appendUtf8(text, m_text);
    }
    m_decodedToEnd = static_cast<unsigned char>(block.back()) < 0x80;
}
