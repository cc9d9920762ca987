#pragma once

#include <QByteArray>
#include <QStringDecoder>
#include <optional>
#include <string_view>

class QIODevice;

// Reads a text file in blocks and hands it out in pieces of whole lines, in UTF-8, with no carriage
// returns in them.
//
// Plain ASCII, which association files are but for a rare label, passes as it stands. All other
// text goes through the toolkit's decoder for the system's encoding, or for the one that a
// byte-order mark tells, in the same steps in which the toolkit's text stream would take it: so
// even bytes that are no text come out as they would there. A lone surrogate keeps a code of its
// own (see utf8.h).
//
// Holds one block and the line that it ends in; a line of any length is read in linear time.
class TextBlocks {
public:
    static constexpr qsizetype defaultBlockSize = 128 * 1024;

    // The device has to be open for reading, at its start.
    TextBlocks(QIODevice& device, qsizetype blockSize);

    // Goes on to the next piece. False behind the last one, and where the device could not be read.
    bool next();
    bool failed() const { return m_failed; }

    // One or more lines, each with its line feed; the file's last line may be without. Behind it
    // `padding` more bytes may be read, whatever they hold. Valid until next() is called.
    std::string_view piece() const {
        return {m_text.constData(), static_cast<size_t>(m_pieceSize)};
    }
    static constexpr qsizetype padding = 64;

    // True when the device held no byte at all, known once next() was called.
    bool isEmpty() const { return m_bytesRead == 0; }

private:
    bool readBlock(qsizetype size);
    bool readBytes(qsizetype size);
    void detectEncoding();
    void dropCarriageReturns();
    void decodeBlock();

    QIODevice& m_device;
    const qsizetype m_blockSize;
    qint64 m_bytesRead = 0;
    bool m_atEnd = false;
    bool m_failed = false;

    // The piece, behind it the start of the next line, and behind that padding or the bytes of a
    // block that are not text yet.
    QByteArray m_text;
    qsizetype m_textSize = 0;
    qsizetype m_pieceSize = 0;

    std::optional<QStringDecoder> m_decoder;
    bool m_isWide = false;      // no byte of such an encoding may pass as it stands
    bool m_decodedToEnd = true; // no character is cut by the end of the last block
};
