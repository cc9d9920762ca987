#pragma once

#include <QByteArray>
#include <QStringDecoder>
#include <optional>
#include <string_view>

class QIODevice;

qint64 lineFeeds(std::string_view text); // how many it has

// Reads a text file block by block and returns it as pieces of whole lines, in UTF-8 and without
// carriage returns.
//
// The encoding is the one named by a byte-order mark, or else the system's. The text is the same as
// QTextStream would read, invalid bytes included; a lone surrogate is encoded as utf8.h says.
//
// Memory holds one block and the line at its end. Lines of any length are read in linear time.
class TextBlocks {
public:
    static constexpr qsizetype defaultBlockSize = 128 * 1024;

    // How bytes without a byte-order mark are read: in the system's encoding, as QTextStream does,
    // or as they are.
    enum class Unmarked { System, AsTheyAre };

    // The device must be open for reading, at its start, and must outlive this object.
    TextBlocks(QIODevice& device, qsizetype blockSize, Unmarked unmarked = Unmarked::System);

    // Goes to the next piece. False after the last one, or if reading failed.
    bool next();
    bool failed() const { return m_failed; }

    // One or more lines, each with its line feed; the file's last line may lack one. `padding` more
    // bytes after the piece are readable, with unspecified contents. Valid until the next call of
    // next().
    std::string_view piece() const {
        return {m_text.constData(), static_cast<size_t>(m_pieceSize)};
    }
    static constexpr qsizetype padding = 64;

    // Whether text is taken as it stands, byte for byte but for carriage returns, so that it can be
    // read from any place on. Valid once next() was called.
    bool canSkip() const { return m_isAsItIs; }
    qint64 bytesRead() const { return m_bytesRead; } // of the device

    // Where in the device the piece begins; nothing where it cannot skip, or where carriage returns
    // were dropped from the piece or perhaps before it.
    std::optional<qint64> pieceStart() const {
        return m_isAsItIs && m_isWhole ? std::optional(m_bytesRead - m_textSize) : std::nullopt;
    }

    // Drops the text at hand and goes on from a later byte of the device. canSkip() is true.
    void skipTo(qint64 byte);

    // True if the device held no bytes. Valid once next() was called.
    bool isEmpty() const { return m_bytesRead == 0; }

private:
    bool readBlock(qsizetype size);
    bool readBytes(qsizetype size);
    void detectEncoding();
    void dropCarriageReturns();
    void decodeBlock();

    QIODevice& m_device;
    const qsizetype m_blockSize;
    const Unmarked m_unmarked;
    qint64 m_bytesRead = 0;
    bool m_atEnd = false;
    bool m_failed = false;

    // The piece, then the start of the next line, then the padding or the undecoded block.
    QByteArray m_text;
    qsizetype m_textSize = 0;
    qsizetype m_pieceSize = 0;

    std::optional<QStringDecoder> m_decoder;
    bool m_isWide = false;      // even ASCII characters must be decoded
    bool m_isAsItIs = false;    // nothing is decoded
    bool m_isWhole = true;      // nothing was dropped from the text at hand
    bool m_decodedToEnd = true; // the last block did not end inside a character
};
