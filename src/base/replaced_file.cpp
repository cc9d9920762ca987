#include "replaced_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>

namespace {

using Write = std::function<bool(QIODevice&)>;

enum class Outcome { Written, NotWritten, NotReplaceable };

// Replacing a device or a pipe with a regular file would destroy it.
bool isSpecial(const QString& fileName) {
    const QFileInfo info(fileName);
    return info.exists() && !info.isFile();
}

// A full disk would not hold the file in place either, and would cost the older one.
Outcome outcomeOfLastError() {
    return errno == ENOSPC || errno == EDQUOT ? Outcome::NotWritten : Outcome::NotReplaceable;
}

Outcome replaceWhole(const QString& fileName, QIODevice::OpenMode mode, const Write& write) {
    QSaveFile file(fileName);
    errno = 0;
    if (!file.open(mode))
        return outcomeOfLastError();
    // After this flush, commit() can fail only to put the file in place.
    if (!write(file) || !file.flush())
        return Outcome::NotWritten;
    return file.commit() ? Outcome::Written : outcomeOfLastError();
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
    const Outcome outcome =
        isSpecial(fileName) ? Outcome::NotReplaceable : replaceWhole(fileName, mode, write);
    if (outcome == Outcome::NotReplaceable)
        return writeInPlace(fileName, mode, write);
    return outcome == Outcome::Written;
}
