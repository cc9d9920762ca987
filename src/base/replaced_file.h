#pragma once

#include <QIODevice>
#include <QString>
#include <functional>

// Writes a file through a temporary one beside it, which replaces an older file only when complete:
// after a crash or on a full disk the older file is still whole. Devices and pipes are written in
// place, and so is any file that can be opened but not replaced, because its name is too long for a
// temporary one, its folder is read-only or sticky, or it is a mount point. `write` may then be
// called a second time. `mode` is added to WriteOnly. False if the file could not be written whole;
// a new file is then removed.
bool replaceFile(const QString& fileName, QIODevice::OpenMode mode,
                 const std::function<bool(QIODevice&)>& write);
