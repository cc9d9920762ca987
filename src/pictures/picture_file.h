#pragma once

#include "plot_request.h"

#include <QImage>
#include <QString>
#include <functional>
#include <optional>

class QIODevice;
class QPaintDevice;

// A plot that can be drawn as an image, or on a page.
struct Picture {
    QString title;
    QSize size; // at 96 dots per inch, in pixels
    int magnification = 1;
    std::optional<double> lambda;                   // of a quantile-quantile plot
    std::function<QImage()> image;                  // null where there is no memory for it
    std::function<bool(QPaintDevice& page)> drawOn; // false where there is no memory for it
};

// Writes a picture to a device that is open for writing: the same bytes each time. A PDF has one
// page of the picture's size. False where that failed.
bool writePicture(QIODevice& device, PictureFormat format, const Picture& picture);
