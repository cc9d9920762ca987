#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <memory>

// The name of the kind of file that these first bytes belong to where it is no text, plain or
// packed by gzip or zstd: "a zip archive", "a PDF document", "an Excel workbook" ... Empty for
// text. For kinds that another program unpacks, the text says how.
QString foreignKind(QByteArrayView head);

// Reads the content of a device unpacked, by its content and not its name: plain, gzip (several
// members, BGZF) or zstd (several frames, skippable frames). A lone carriage return that ends a
// line becomes a line feed in text that has no line feeds. Sequential.
//
// A stream that ends early or is corrupt is a read error: read() returns -1 and errorString() says
// what and where. BGZF without its empty last block counts as cut short.
class UnpackedDevice : public QIODevice {
public:
    // Whether lone carriage returns that end lines are replaced.
    enum class LineEnds { Unified, AsTheyAre };

    // `packed` is open for reading and outlives this.
    explicit UnpackedDevice(QIODevice& packed, LineEnds lineEnds = LineEnds::Unified);
    ~UnpackedDevice() override;

    bool open(OpenMode mode) override;
    bool isSequential() const override { return true; }

    // What the content is packed by: "plain", "gzip", "bgzip" or "zstd". Known once open.
    QString packing() const;

    // The first unpacked bytes, before any is read; empty where there are none, or at an error.
    QByteArrayView start();

    // True where lone carriage returns end lines. Known once something was read.
    bool endsLinesByReturn() const;

    // True where the packed stream was cut short or corrupt, as opposed to an unreadable device.
    bool isDamaged() const;

    // How far the packed device was read, for a progress report; bytes.
    qint64 packedBytesRead() const;

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 skipData(qint64 maxSize) override;
    qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

private:
    struct Implementation;
    std::unique_ptr<Implementation> m;
};
