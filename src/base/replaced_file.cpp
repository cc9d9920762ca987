#include "replaced_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

// To put a finished file in the place of a device, or of a pipe, would be to lose the device.
bool isSpecial(const QString& fileName) {
    const QFileInfo info(fileName);
    return info.exists() && !info.isFile();
}

} // namespace

bool replaceFile(const QString& fileName, QIODevice::OpenMode mode,
                 const std::function<bool(QIODevice&)>& write) {
    mode |= QIODevice::WriteOnly;
    if (isSpecial(fileName)) {
        QFile file(fileName);
        return file.open(mode) && write(file) && file.flush();
    }
    QSaveFile file(fileName);
    file.setDirectWriteFallback(true);
    // Of what is still in its buffer, commit() alone would not notice that it can't be written.
    return file.open(mode) && write(file) && file.flush() && file.commit();
}
