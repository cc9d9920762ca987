#pragma once

#include <QByteArray>
#include <QString>

// Checks what both readers make of a file, in blocks of several sizes, and that the plain reader is
// of the same mind. The outcomes are written as told() tells them; the load is that of `label`.
void checkReading(const QByteArray& file, const QString& label, const QString& expectedScan,
                  const QString& expectedLoad);
