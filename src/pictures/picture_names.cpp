#include "picture_names.h"

#include <QFile>
#include <QFileInfo>

namespace {

std::optional<PictureFormat> formatOf(const QByteArray& text) {
    const QByteArray ending = text.mid(text.lastIndexOf('.') + 1).toLower();
    return ending == "png"   ? std::optional(PictureFormat::Png)
           : ending == "pdf" ? std::optional(PictureFormat::Pdf)
                             : std::nullopt;
}

std::variant<PictureNames, Failure> namesIn(const QByteArray& folder, const Arguments& arguments,
                                            PictureFormat format) {
    PictureNames names{{}, format};
    for (const QByteArray& file : arguments.files) {
        const QByteArray name =
            file == "-" ? "standard_input"
                        : QFile::encodeName(QFileInfo(QFile::decodeName(file)).fileName());
        const QByteArray path = folder + (folder.endsWith('/') ? "" : "/") + name +
                                (format == PictureFormat::Pdf ? ".pdf" : ".png");
        if (names.paths.contains(path))
            return wrongCall(QStringLiteral("%1: would be the picture of two files. Put them in "
                                            "different folders.")
                                 .arg(QFile::decodeName(path)));
        names.paths.append(path);
    }
    return names;
}

} // namespace

std::variant<PictureNames, Failure> pictureNames(const Arguments& arguments) {
    const std::optional<QByteArray> out = arguments.value("--output");
    if (!out)
        return wrongCall(
            QStringLiteral("no picture is named. Add -o and a file that ends in .png or "
                           ".pdf, or a folder."));
    const auto given = arguments.value("--format");
    if (QFileInfo(QFile::decodeName(*out)).isDir())
        return namesIn(*out, arguments, formatOf(given.value_or("png")).value());
    const QString name = QFile::decodeName(*out);
    if (arguments.files.size() > 1)
        return wrongCall(QStringLiteral("-o %1: is no folder, but there are several files to draw. "
                                        "Make the folder first, or draw one file.")
                             .arg(name));
    const std::optional<PictureFormat> format = formatOf(given.value_or(*out));
    if (!format)
        return wrongCall(
            QStringLiteral("-o %1: ends in neither .png nor .pdf. Name a file that does, "
                           "a folder, or give --format.")
                .arg(name));
    return PictureNames{{*out}, *format};
}
