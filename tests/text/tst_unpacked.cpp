#include "support/failing_device.h"
#include "support/random.h"
#include "unpacked.h"

#include <QBuffer>
#include <QTest>
#include <QtEndian>
#include <algorithm>
#include <zstd.h>

// What comes out of packed files, whole, damaged and strange ones.
class Unpacking : public QObject {
    Q_OBJECT

private slots:
    void contents_data();
    void contents();
    void cutAtEveryByte_data();
    void cutAtEveryByte();
    void everyBitFlipped_data();
    void everyBitFlipped();
    void damages_data();
    void damages();
    void damageAfterTheSameText_data();
    void damageAfterTheSameText();
    void readErrors();
    void lineEnds_data();
    void lineEnds();
    void foreignKinds_data();
    void foreignKinds();
};

namespace {

quint32 crc32(QByteArrayView bytes) {
    quint32 crc = ~quint32{0};
    for (const char byte : bytes) {
        crc ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xedb88320 : 0);
    }
    return ~crc;
}

QByteArray littleEndian(quint32 number) {
    number = qToLittleEndian(number);
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

// Without what surrounds it in the form that Qt writes: sizes, a header and a checksum.
QByteArray deflated(const QByteArray& content) {
    return content.isEmpty() ? QByteArray("\3\0", 2) : qCompress(content).sliced(6).chopped(4);
}

QByteArray gzipMember(const QByteArray& content, char flags = 0, const QByteArray& fields = {}) {
    return QByteArray("\x1f\x8b\x08", 3) + flags + QByteArray("\0\0\0\0\0\xff", 6) + fields +
           deflated(content) + littleEndian(crc32(content)) +
           littleEndian(static_cast<quint32>(content.size()));
}

// A bgzip block. Its size is not what is tested.
QByteArray bgzipBlock(const QByteArray& content) {
    return gzipMember(content, 4, QByteArray("\6\0BC\2\0\x1b\0", 8));
}

QByteArray zstdFrame(const QByteArray& content) {
    QByteArray packed(static_cast<qsizetype>(ZSTD_compressBound(size_t(content.size()))), '\0');
    ZSTD_CCtx* const context = ZSTD_createCCtx();
    ZSTD_CCtx_setParameter(context, ZSTD_c_checksumFlag, 1);
    packed.resize(static_cast<qsizetype>(
        ZSTD_compress2(context, packed.data(), static_cast<size_t>(packed.size()),
                       content.constData(), static_cast<size_t>(content.size()))));
    ZSTD_freeCCtx(context);
    return packed;
}

QByteArray skippableFrame() {
    return QByteArray("\x53\x2a\x4d\x18\4\0\0\0skip", 12);
}

// Lines of numbers, as a table has them.
QByteArray table(qsizetype size) {
    Random random(7);
    QByteArray text;
    while (text.size() < size)
        text += QByteArray::number(random.below(1000)) + '\t' +
                QByteArray::number(random.fraction()) + '\n';
    return text;
}

const QByteArray small = table(200);

// A device that returns few bytes at a time, as pipes do.
class SlowDevice : public QBuffer {
public:
    SlowDevice(QByteArray* content, qint64 most) : QBuffer(content), m_most(most) {}

protected:
    qint64 readData(char* data, qint64 maxSize) override {
        return QBuffer::readData(data, std::min(maxSize, m_most));
    }

private:
    qint64 m_most;
};

struct Outcome {
    QByteArray content;
    QString packing;
    QString error; // empty for success
    bool isDamaged = false;
};

Outcome unpackedFrom(QIODevice& packed, qint64 blockSize) {
    Outcome outcome;
    packed.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    UnpackedDevice device(packed);
    if (!device.open(QIODevice::ReadOnly))
        return {{}, {}, "open: " + device.errorString(), device.isDamaged()};
    QByteArray block(blockSize, '\0');
    qint64 count = 0;
    while ((count = device.read(block.data(), blockSize)) > 0)
        outcome.content.append(block.constData(), count);
    outcome.packing = device.packing();
    outcome.error = count < 0 ? device.errorString() : QString();
    outcome.isDamaged = device.isDamaged();
    return outcome;
}

Outcome unpacked(QByteArray packed, qint64 most = 1 << 20, qint64 blockSize = 128 * 1024) {
    SlowDevice device(&packed, most);
    return unpackedFrom(device, blockSize);
}

// Kinds of packing that end in a way of their own, so that no cut of them goes unnoticed.
void addClosedKinds() {
    QTest::addColumn<QByteArray>("packed");
    QTest::newRow("gzip") << gzipMember(small);
    QTest::newRow("gzip, all fields")
        << gzipMember(small, 4 + 8 + 16, QByteArray("\5\0AB\1\0xname\0comment\0", 20));
    QTest::newRow("gzip, no content") << gzipMember("");
    QTest::newRow("bgzip") << bgzipBlock(small.first(150)) + bgzipBlock(small.sliced(150)) +
                                  bgzipBlock("");
    QTest::newRow("zstd") << zstdFrame(small);
}

} // namespace

void Unpacking::contents_data() {
    QTest::addColumn<QByteArray>("packed");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("packing");
    const auto row = [](const char* name, const QByteArray& packed, const QByteArray& content,
                        const char* packing) {
        QTest::newRow(name) << packed << content << QString::fromLatin1(packing);
    };
    const QByteArray large = table(700'000), a = large.first(300'000), b = large.sliced(300'000);
    row("nothing", "", "", "plain");
    row("one byte", "x", "x", "plain");
    row("plain", large, large, "plain");
    row("gzip", gzipMember(large), large, "gzip");
    row("gzip, nothing", gzipMember(""), "", "gzip");
    row("gzip, all fields",
        gzipMember(small, 4 + 8 + 16, QByteArray("\5\0AB\1\0xname\0comment\0", 20)), small, "gzip");
    row("gzip, members", gzipMember(a) + gzipMember("") + gzipMember(b), large, "gzip");
    row("gzip, zeros", gzipMember(large) + QByteArray(300'000, '\0'), large, "gzip");
    row("bgzip", bgzipBlock(a) + bgzipBlock(b) + bgzipBlock(""), large, "bgzip");
    row("bgzip, joined", bgzipBlock(a) + bgzipBlock("") + bgzipBlock(b) + bgzipBlock(""), large,
        "bgzip");
    row("bgzip, gzip", bgzipBlock(a) + bgzipBlock("") + gzipMember(b), large, "bgzip");
    row("zstd", zstdFrame(large), large, "zstd");
    row("zstd, nothing", zstdFrame(""), "", "zstd");
    row("zstd, frames", zstdFrame(a) + zstdFrame("") + zstdFrame(b), large, "zstd");
    row("zstd, skippable",
        skippableFrame() + zstdFrame(a) + skippableFrame() + zstdFrame(b) + skippableFrame(), large,
        "zstd");
    QByteArray many;
    for (int i = 0; i < 2000; ++i)
        many += bgzipBlock(large.sliced(i * 350, 350));
    row("bgzip, many blocks", many + bgzipBlock(""), large.first(700'000), "bgzip");
}

void Unpacking::contents() {
    QFETCH(const QByteArray, packed);
    QFETCH(const QByteArray, content);
    QFETCH(const QString, packing);
    for (const qint64 most : {1, 4099, 1 << 20})
        for (const qint64 blockSize : {1, 1000, 128 * 1024, 10 << 20}) {
            if (std::min(most, blockSize) == 1 && packed.size() > 1000)
                continue;
            const Outcome outcome = unpacked(packed, most, blockSize);
            QCOMPARE(outcome.error, QString());
            QCOMPARE(outcome.packing, packing);
            QVERIFY(outcome.content == content);
            QVERIFY(!outcome.isDamaged);
        }
}

void Unpacking::cutAtEveryByte_data() {
    addClosedKinds();
}

void Unpacking::cutAtEveryByte() {
    QFETCH(const QByteArray, packed);
    constexpr qsizetype recognised = 4; // bytes
    for (qsizetype size = recognised; size < packed.size(); ++size)
        for (const qint64 most : {1, 1 << 20}) {
            const Outcome outcome = unpacked(packed.first(size), most);
            QVERIFY2(outcome.isDamaged, qPrintable(QString::number(size)));
            QVERIFY2(outcome.error.contains(QStringLiteral("cut short")),
                     qPrintable(outcome.error));
            QVERIFY2(outcome.error.contains(QString::number(size)), qPrintable(outcome.error));
            QVERIFY(small.startsWith(outcome.content));
        }
}

void Unpacking::everyBitFlipped_data() {
    addClosedKinds();
}

void Unpacking::everyBitFlipped() {
    QFETCH(const QByteArray, packed);
    const Outcome whole = unpacked(packed);
    for (qsizetype i = 0; i < packed.size(); ++i)
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray flipped = packed;
            flipped[i] = static_cast<char>(flipped[i] ^ 1 << bit);
            const Outcome outcome = unpacked(flipped);
            const bool isSame = outcome.error.isEmpty() && outcome.content == whole.content;
            QVERIFY2(isSame || outcome.isDamaged || outcome.packing == u"plain",
                     qPrintable(QStringLiteral("bit %1 of byte %2").arg(bit).arg(i)));
        }
}

void Unpacking::damages_data() {
    QTest::addColumn<QByteArray>("packed");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QByteArray& packed, const char* expected) {
        QTest::newRow(name) << packed << QString::fromLatin1(expected);
    };
    QByteArray wrongSum = gzipMember(small), wrongSize = wrongSum;
    wrongSum[wrongSum.size() - 8] = static_cast<char>(wrongSum[wrongSum.size() - 8] + 1);
    wrongSize.back() = 1;
    row("gzip, wrong checksum", wrongSum, "checksum is wrong");
    row("gzip, wrong size", wrongSize, "checksum is wrong");
    row("gzip, text follows", gzipMember(small) + "more", "not gzip data");
    row("gzip, one byte follows", gzipMember(small) + "m", "not gzip data");
    row("gzip, half a magic", gzipMember(small) + "\x1f", "cut short");
    row("gzip, a header", gzipMember(small) + gzipMember(small).first(10), "cut short");
    row("gzip, after zeros", gzipMember(small) + QByteArray(9, '\0') + "x", "not gzip data");
    row("gzip, a member after zeros", gzipMember(small) + '\0' + gzipMember(small),
        "not gzip data");
    row("gzip, unknown method", "\x1f\x8b\x07 and more text", "not gzip data");
    row("bgzip, no last block", bgzipBlock(small) + bgzipBlock(small), "cut short");
    row("bgzip, zeros for a last block", bgzipBlock(small) + QByteArray(100, '\0'), "cut short");
    row("zstd, text follows", zstdFrame(small) + "more text", "Unknown frame descriptor");
    row("zstd, half a magic", zstdFrame(small) + "\x28\xb5", "cut short");
    row("zstd, a skippable frame cut", zstdFrame(small) + skippableFrame().chopped(1), "cut short");
}

void Unpacking::damages() {
    QFETCH(const QByteArray, packed);
    QFETCH(const QString, expected);
    const Outcome outcome = unpacked(packed);
    QVERIFY2(outcome.error.contains(expected), qPrintable(outcome.error));
    QVERIFY(outcome.isDamaged);
    QVERIFY(QByteArray(small + small).startsWith(outcome.content));
}

void Unpacking::damageAfterTheSameText_data() {
    const QByteArray large = table(700'000), a = large.first(300'000), b = large.sliced(300'000);
    QTest::addColumn<QByteArray>("packed");
    QTest::newRow("gzip") << gzipMember(large);
    QTest::newRow("bgzip") << bgzipBlock(a) + bgzipBlock(b) + bgzipBlock("");
    QTest::newRow("zstd") << zstdFrame(large);
    QTest::newRow("zstd, frames") << zstdFrame(a) + skippableFrame() + zstdFrame(b);
    QTest::newRow("zstd, one text again and again") << zstdFrame(small.repeated(5000));
}

// However the file is read.
void Unpacking::damageAfterTheSameText() {
    QFETCH(const QByteArray, packed);
    Random random(11);
    for (int i = 0; i < 40; ++i) {
        QByteArray damaged = packed;
        const auto at = random.below(static_cast<int>(packed.size()));
        damaged[at] = static_cast<char>(damaged[at] ^ 1 << random.below(8));
        const Outcome whole = unpacked(damaged, 10 << 20, 10 << 20);
        for (const qint64 most : {4099, 10 << 20})
            for (const qint64 blockSize : {999, 64 * 1024, 200 * 1024}) {
                const Outcome parted = unpacked(damaged, most, blockSize);
                QVERIFY2(parted.content == whole.content, qPrintable(QString::number(at)));
                QCOMPARE(parted.error, whole.error);
            }
    }
}

void Unpacking::readErrors() {
    for (const QByteArray& packed :
         {table(500'000), gzipMember(table(2'000'000)), zstdFrame(table(2'000'000))}) {
        for (const qint64 good : {qint64(0), qint64(10), qint64(packed.size() / 2)}) {
            FailingDevice device(packed, good);
            const Outcome outcome = unpackedFrom(device, 1000);
            QVERIFY(!outcome.error.isEmpty());
            QVERIFY2(!outcome.isDamaged, qPrintable(outcome.error));
        }
    }
}

void Unpacking::lineEnds_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const QByteArray& name, const QByteArray& text,
                        const QByteArray& expected) {
        QTest::newRow(name.constData()) << text << expected;
    };
    const QByteArray manyReturns = table(300'000).replace('\n', '\r');
    const QByteArray longLine(64 * 1024 - 1, 'x');
    row("line feeds", "a\nb\n", "a\nb\n");
    row("both", "a\r\nb\r\n", "a\r\nb\r\n");
    row("returns", "a\rb\r", "a\nb\n");
    row("returns, no end", "a\rb", "a\nb");
    row("one return", "\r", "\n");
    row("many returns", manyReturns, table(300'000));
    row("a return at the end of the head", longLine + "\r\nb\r\n", longLine + "\r\nb\r\n");
    row("only a return there", longLine + "\rb\r", longLine + "\nb\n");
    row("a line feed too late", longLine + "\rb\r\n", longLine + "\nb\n\n");
    row("returns after the head", longLine + "xx\rb\r", longLine + "xx\rb\r");
    // Other characters have the bytes of returns and line feeds too.
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE,
                                QStringConverter::Utf32LE, QStringConverter::Utf32BE}) {
        const auto wide = [encoding](const QString& all) {
            return QByteArray(
                QStringEncoder(encoding, QStringConverter::Flag::WriteBom).encode(all));
        };
        const QString odd = QStringLiteral("\u010D\u0D0A\u0A0A"), longText(64 * 1024, u'x');
        const QByteArray name(QStringConverter::nameForEncoding(encoding));
        row(name + ", returns", wide("a\r" + odd + '\r'), wide("a\n" + odd + '\n'));
        row(name + ", both", wide(odd + "\r\nb\r"), wide(odd + "\r\nb\r"));
        row(name + ", long", wide("a\r" + longText + "\rb"), wide("a\n" + longText + "\nb"));
        // So long that a return is the last of the bytes that are looked at.
        const auto width = wide(QString()).size();
        const QString headLine = QString(64 * 1024 / width - 2, u'x') + '\r';
        row(name + ", both there", wide(headLine + "\nb\r"), wide(headLine + "\nb\r"));
        row(name + ", a return there", wide(headLine + "b\r"),
            wide(QString(headLine).replace('\r', '\n') + "b\n"));
        row(name + ", cut", wide("a\rb\r").chopped(1), wide("a\nb\r").chopped(1));
    }
}

void Unpacking::lineEnds() {
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArray, expected);
    for (const QByteArray& packed : {text, gzipMember(text), zstdFrame(text)})
        for (const qint64 most : {999, 1 << 20})
            for (const qint64 blockSize : {7, 128 * 1024})
                QVERIFY(unpacked(packed, most, blockSize).content == expected);
}

void Unpacking::foreignKinds_data() {
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QString>("expected"); // the start
    const auto row = [](const QByteArray& head, const char* expected) {
        QTest::addRow("%s", head.left(12).toPercentEncoding(" #,\"{<>!?\t").constData())
            << head << QString::fromLatin1(expected);
    };
    row("PK\x03\x04 table.txt", "a zip archive");
    row("PK\x03\x04 [Content_Types].xml xl/workbook.xml", "an Excel workbook");
    row("PK\x03\x04 [Content_Types].xml word/document.xml", "a Word document");
    row("PK\x03\x04 mimetypeapplication/vnd.oasis.opendocument.spreadsheet",
        "an OpenDocument spreadsheet");
    row("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1 and more", "an Excel workbook");
    row(QByteArray("\xfd"
                   "7zXZ\0\0\4",
                   8),
        "an xz file");
    row("BZh91AY&SY\x01\x02", "a bzip2 file");
    row("BZh9\x17rE8P\x90", "a bzip2 file");
    row("%PDF-1.4\n", "a PDF document");
    row("<!DOCTYPE html>\n<html>", "an HTML page");
    row("\xef\xbb\xbf\n <HTML lang=en>", "an HTML page");
    row("<?xml version=\"1.0\"?>", "an XML document");
    row("PAR1\x15\x04", "a Parquet file");
    row("BCF\x02\x02", "a BCF file");
    row("\x89PNG\r\n\x1a\n", "a PNG picture");
    row("\xff\xd8\xff\xe0", "a JPEG picture");
    row(QByteArray("\x89HDF\r\n\x1a\n", 8), "an HDF5 file");
    row("RDX3\nX\n", "an R data file");
    row(QByteArray(257, 'x') + "ustar", "a tar archive");
    row("\x1f\x9d\x90", "a file packed by compress");
    row("7z\xbc\xaf\x27\x1c", "a 7z archive");
    row("Rar!\x1a\x07\x01", "a rar archive");
    row("%!PS-Adobe-3.0", "a PostScript document");
    row("{\\rtf1", "an RTF document");
    row(QByteArray("ARROW1\0\0", 8), "an Arrow file");
    row(QByteArray("FEA1\0\0", 6), "a Feather file");
    row("BAM\x01", "a BAM file");
    row("CRAM\x02", "a CRAM file");
    row("CRAM\x03", "a CRAM file");
    row("\x6c\x1b\x01\xff", "a PLINK .bed file");
    row(QByteArray("SQLite format 3\0", 16), "an SQLite database");
    row("RDX2\nX\n", "an R data file");
    row(QByteArray("X\n\0\0\0\3", 6), "an R data file");
    row("GIF87a", "a GIF picture");
    row("GIF89a", "a GIF picture");
    row("\x7f"
        "ELF",
        "a program");
    for (const char* text : {"", "P", "PK", "chr\tpos\tp\n", "BZh9 is a marker", "PAR1\tPAR2",
                             "##fileformat=VCFv4.2", "BCF\tCHR",
                             "\xff\xfe"
                             "c",
                             "<2e-16 1 2",
                             "\xef\xbb\xbf"
                             "CHR POS P",
                             "GIF89 CHR", "PKD1 CHR POS P"})
        row(text, "");
}

void Unpacking::foreignKinds() {
    QFETCH(const QByteArray, head);
    QFETCH(const QString, expected);
    const QString kind = foreignKind(head);
    QVERIFY2(expected.isEmpty() ? kind.isEmpty() : kind.startsWith(expected), qPrintable(kind));
    for (qsizetype size = 0; size < head.size(); ++size)
        foreignKind(head.first(size));
}

QTEST_GUILESS_MAIN(Unpacking)
#include "tst_unpacked.moc"
