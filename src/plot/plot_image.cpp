#include "plot_image.h"

#include "replaced_file.h"

#include <QPixmap>

bool savePlotImage(const QPixmap& image, const QString& fileName) {
    return replaceFile(fileName, {}, [&](QIODevice& device) { return image.save(&device, "PNG"); });
}
