#include "replaced_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>

namespace {

using Write = std::function<bool(QIODevice&)>;

// Replacing a device or a pipe with a regular file would destroy it.
bool isSpecial(const QString& fileName) {
    const QFileInfo info(fileName);
    return info.exists() && !info.isFile();
}

// In a sticky folder Linux may refuse O_CREAT on a file that exists, hence ExistingOnly.
bool writeInPlace(const QString& fileName, QIODevice::OpenMode mode, const Write& write) {
    const bool isNew = !QFileInfo::exists(fileName);
    QFile file(fileName);
    if (!file.open(isNew ? mode : mode | QIODevice::ExistingOnly))
        return false;
    const bool isWritten = write(file) && file.flush();
    if (!isWritten && isNew)
        QFile::remove(QFileInfo(fileName).canonicalFilePath());
    return isWritten;
}

} // namespace

bool replaceFile(const QString& fileName, QIODevice::OpenMode mode, const Write& write) {
    mode |= QIODevice::WriteOnly;
    if (!isSpecial(fileName)) {
        QSaveFile file(fileName);
        errno = 0;
        if (file.open(mode)) {
            // After this flush, commit() can fail only to put the file in place.
            if (!write(file) || !file.flush())
                return false;
            if (file.commit())
                return true;
        }
        // On a full disk, writing in place would fail too and lose the older file.
        if (errno == ENOSPC || errno == EDQUOT)
            return false;
    }
    return writeInPlace(fileName, mode, write);
}
