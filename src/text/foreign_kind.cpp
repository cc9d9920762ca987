#include "unpacked.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

struct Kind {
    qsizetype offset;
    QByteArrayView magic; // the bytes at the offset
    const char* name;
};

template <size_t size>
constexpr Kind kind(const char (&magic)[size], const char* name, qsizetype offset = 0) {
    return {offset, QByteArrayView(magic, static_cast<qsizetype>(size) - 1), name};
}

constexpr std::array kinds = {
    kind("PK\x03\x04", "a zip archive (unpack it with: unzip FILE)"),
    kind("PK\x05\x06", "an empty zip archive"),
    kind("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1",
         "an Excel workbook or another old Office document (save the table as tab-separated text)"),
    kind("\xfd"
         "7zXZ\0",
         "an xz file (unpack it with: xz -d FILE)"),
    kind("LZIP\x01", "an lzip file (unpack it with: lzip -d FILE)"),
    kind("\x04\x22\x4d\x18", "an lz4 file (unpack it with: lz4 -d FILE)"),
    kind("\x1f\x9d", "a file packed by compress (unpack it with: gzip -d FILE)"),
    kind("7z\xbc\xaf\x27\x1c", "a 7z archive (unpack it with: 7z x FILE)"),
    kind("Rar!\x1a\x07", "a rar archive (unpack it with: unrar x FILE)"),
    kind("ustar", "a tar archive (unpack it with: tar -xf FILE)", 257),
    kind("%PDF-", "a PDF document"),
    kind("%!PS-Adobe", "a PostScript document"),
    kind("{\\rtf", "an RTF document (save the table as plain text)"),
    kind("PAR1\x15", "a Parquet file (export it as tab-separated text)"),
    kind("ARROW1\0", "an Arrow file (export it as tab-separated text)"),
    kind("FEA1\0", "a Feather file (export it as tab-separated text)"),
    kind("BCF\x02", "a BCF file (convert it with: bcftools view FILE)"),
    kind("BAM\x01", "a BAM file of sequence reads"),
    kind("CRAM\x02", "a CRAM file of sequence reads"),
    kind("CRAM\x03", "a CRAM file of sequence reads"),
    kind("\x6c\x1b\x01", "a PLINK .bed file of genotypes"),
    kind("\x89HDF\r\n\x1a\n", "an HDF5 file (export the table as tab-separated text)"),
    kind("SQLite format 3\0", "an SQLite database (export the table as tab-separated text)"),
    kind("RDX2\n", "an R data file (write the table with write.table in R)"),
    kind("RDX3\n", "an R data file (write the table with write.table in R)"),
    kind("X\n\0\0\0", "an R data file (write the table with write.table in R)"),
    kind("\x89PNG\r\n", "a PNG picture"),
    kind("\xff\xd8\xff", "a JPEG picture"),
    kind("GIF87a", "a GIF picture"),
    kind("GIF89a", "a GIF picture"),
    kind("\x7f"
         "ELF",
         "a program"),
};

// Text begins like this, too, so that what follows decides.
bool isBzip2(QByteArrayView head) {
    return head.size() >= 10 && head.startsWith("BZh") && head[3] >= '1' && head[3] <= '9' &&
           (head.sliced(4).startsWith("1AY&SY") || head.sliced(4).startsWith("\x17rE8P\x90"));
}

// An Office document is a zip archive; the folders in it tell what it is.
QString officeKind(QByteArrayView head) {
    if (head.contains("opendocument.spreadsheet"))
        return QStringLiteral("an OpenDocument spreadsheet (save the table as tab-separated text)");
    if (head.contains("word/"))
        return QStringLiteral("a Word document (save the table as plain text)");
    if (head.contains("[Content_Types].xml") || head.contains("xl/"))
        return QStringLiteral("an Excel workbook (save the table as tab-separated text)");
    return {};
}

QString markupKind(QByteArrayView head) {
    constexpr QByteArrayView byteOrderMark("\xef\xbb\xbf");
    if (head.startsWith(byteOrderMark))
        head = head.sliced(byteOrderMark.size());
    const QByteArray start =
        head.first(std::min<qsizetype>(head.size(), 1024)).toByteArray().trimmed().toLower();
    for (const char* tag : {"<!doctype html", "<html", "<head", "<body", "<script", "<!--"})
        if (start.startsWith(tag))
            return QStringLiteral("an HTML page (download the file itself, not its page)");
    return start.startsWith("<?xml") ? QStringLiteral("an XML document") : QString();
}

} // namespace

QString foreignKind(QByteArrayView head) {
    if (head.startsWith("PK"))
        if (QString office = officeKind(head); !office.isEmpty())
            return office;
    for (const Kind& kind : kinds)
        if (head.size() > kind.offset && head.sliced(kind.offset).startsWith(kind.magic))
            return QString::fromLatin1(kind.name);
    if (isBzip2(head))
        return QStringLiteral("a bzip2 file (unpack it with: bzip2 -d FILE)");
    return markupKind(head);
}
