#pragma once

class QPixmap;
class QString;

// Writes the plot to a PNG file, which takes an older file's place only when it is complete. False
// when it could not be written whole.
bool savePlotImage(const QPixmap& image, const QString& fileName);
