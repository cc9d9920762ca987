#pragma once

#include <QIODevice>
#include <QString>
#include <functional>

// Lets `write` fill a file, which takes an older file's place only when it is complete: whatever
// ends the program on the way, there is either the older file or the new one. Where no new file may
// be made, or the name is that of a device, it is written in place. The mode is added to that of
// writing. False when the file could not be written whole; an older file in a folder that takes new
// ones then is as it was.
bool replaceFile(const QString& fileName, QIODevice::OpenMode mode,
                 const std::function<bool(QIODevice&)>& write);
