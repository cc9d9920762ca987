#pragma once

#include "points.h"

#include <QByteArray>
#include <QString>

class QIODevice;

// The reference for saved tables: QTextStream writes each number.
namespace plain {

// The device must be open for writing. False if any of it could not be written.
bool writeTable(QIODevice& device, const Points& points, const QString& label);

QByteArray table(const Points& points, const QString& label);

} // namespace plain
