#include "picture_file.h"

#include "file_writing.h"

#include <QBuffer>
#include <QPageSize>
#include <QPdfWriter>

namespace {

constexpr int dotsPerInch = 96;
constexpr double pointsPerInch = 72.0;

// Qt dates every document. Spaces in place of the date keep everything else where it is.
void removeDate(QByteArray& pdf) {
    const qsizetype begin = pdf.lastIndexOf("/CreationDate (D:");
    const qsizetype end = begin < 0 ? begin : pdf.indexOf(')', begin);
    if (end >= 0)
        pdf.replace(begin, end + 1 - begin, QByteArray(end + 1 - begin, ' '));
}

bool writePdf(QIODevice& device, const Picture& picture) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setTitle(picture.title);
        writer.setCreator(QStringLiteral("pelmark-tools"));
        writer.setResolution(dotsPerInch * picture.magnification);
        const QSizeF size = QSizeF(picture.size) * (pointsPerInch / dotsPerInch);
        writer.setPageSize(QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch));
        writer.setPageMargins({});
        if (!picture.drawOn(writer))
            return false;
    }
    QByteArray pdf = buffer.data();
    removeDate(pdf);
    return writeAll(device, pdf);
}

} // namespace

bool writePicture(QIODevice& device, PictureFormat format, const Picture& picture) {
    if (format == PictureFormat::Pdf)
        return writePdf(device, picture);
    const QImage image = picture.image();
    QBuffer png;
    return !image.isNull() && image.save(&png, "PNG") && writeAll(device, png.data());
}
