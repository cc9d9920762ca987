#include "safe_output.h"

#include "file_writing.h"

#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString reason() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool isRegular(const QByteArray& path) {
    struct stat status {};
    return stat(path.constData(), &status) != 0 || S_ISREG(status.st_mode);
}

// The file that a path leads to, which a link must go on leading to.
QByteArray withoutLinks(const QByteArray& path) {
    const QString canonical = QFileInfo(QFile::decodeName(path)).canonicalFilePath();
    return canonical.isEmpty() ? path : QFile::encodeName(canonical);
}

// The open descriptor that a path such as /dev/stdout or /dev/fd/3 leads to; -1 where it leads to
// none. What it is redirected to must not be replaced, nor written from its start.
int descriptorAt(const QByteArray& path) {
    constexpr int mostLinks = 40;
    const QString descriptors = QFileInfo(QStringLiteral("/proc/self/fd")).canonicalFilePath();
    QString at = QFile::decodeName(path);
    for (int links = 0; links < mostLinks; ++links) {
        const QFileInfo file(at);
        bool isNumber = false;
        const int descriptor = file.fileName().toInt(&isNumber);
        if (isNumber && QFileInfo(file.absolutePath()).canonicalFilePath() == descriptors)
            return descriptor;
        if (!file.isSymLink())
            return -1;
        at = file.symLinkTarget();
    }
    return -1;
}

// Writing nothing tells.
bool isOpenToWrite(int descriptor) {
    return write(descriptor, "", 0) == 0;
}

bool statOf(const QByteArray& path, struct stat& status) {
    return (path == "-" ? fstat(STDOUT_FILENO, &status) : stat(path.constData(), &status)) == 0;
}

// Of a file that is not there yet.
QString placeOf(const QByteArray& path) {
    const QFileInfo file(QFile::decodeName(path));
    return file.dir().canonicalPath() + u'/' + file.fileName();
}

bool writeAll(int descriptor, const char* data, qint64 size) {
    while (size > 0) {
        const ssize_t written = write(descriptor, data, static_cast<size_t>(size));
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0) {
            data += written;
            size -= written;
        }
    }
    return true;
}

bool copyAll(QFile& from, int to) {
    QByteArray block(256 * 1024, Qt::Uninitialized);
    if (!from.seek(0))
        return false;
    while (true) {
        const qint64 size = from.read(block.data(), block.size());
        if (size <= 0)
            return size == 0;
        if (!writeAll(to, block.constData(), size))
            return false;
    }
}

} // namespace

SafeOutput::SafeOutput(const QByteArray& path, const char* option, bool isReadable)
    : m_path(path), m_option(option), m_isReadable(isReadable),
      m_descriptor(path == "-" ? STDOUT_FILENO : descriptorAt(path)), m_target(withoutLinks(path)) {
}

SafeOutput::~SafeOutput() {
    m_file.close();
}

QString SafeOutput::name() const {
    return m_path == "-" ? QStringLiteral("standard output") : QFile::decodeName(m_path);
}

QString SafeOutput::terminalRefusal() const {
    if (qstrcmp(m_option, "--output") == 0)
        return QStringLiteral(
            "the table would fill this terminal. Name a file with -o OUT, or send "
            "the output to a pipe.");
    return QStringLiteral("%1 - would fill this terminal. Name a file with %1 FILE, or send the "
                          "output to a pipe.")
        .arg(QLatin1String(m_option));
}

std::optional<Failure> SafeOutput::refusal(const Inputs& inputs) const {
    struct stat status {};
    if (m_path == "-" && !m_isReadable && isatty(STDOUT_FILENO) != 0)
        return Failure{StatusWrongCall, terminalRefusal()};
    if (!statOf(m_path, status))
        return std::nullopt;
    if (S_ISDIR(status.st_mode))
        return Failure{StatusUnwritable,
                       name() + QStringLiteral(": is a folder. Name a file in it.")};
    if (inputs.contains(status))
        return Failure{StatusWrongCall,
                       name() + QStringLiteral(": is an input too, and would be overwritten. "
                                               "Name another file.")};
    return std::nullopt;
}

bool SafeOutput::openTemporary() {
    if (m_descriptor >= 0) {
        if (!isOpenToWrite(m_descriptor))
            return false;
    } else if (isRegular(m_path)) {
        m_beside = std::make_unique<NamedTemporaryFile>(m_target);
        if (m_beside->isOpen())
            return takeMode() && m_file.open(m_beside->descriptor(), QIODevice::ReadWrite);
        m_beside.reset();
        // No file can be made there; then the one named must be there and be writable.
        const int failed = errno;
        if (access(m_path.constData(), W_OK) != 0) {
            if (errno != ENOENT || failed == ENOENT || failed == EACCES || failed == EROFS)
                return false;
        }
    } else if (access(m_path.constData(), W_OK) != 0) {
        return false;
    }
    const int descriptor = openNamelessFile(temporaryFolder());
    return descriptor >= 0 &&
           m_file.open(descriptor, QIODevice::ReadWrite, QFileDevice::AutoCloseHandle);
}

// The mode of the file that is replaced, or that of any new file.
bool SafeOutput::takeMode() {
    struct stat status {};
    mode_t mode = 0;
    if (stat(m_target.constData(), &status) == 0) {
        mode = status.st_mode & 07777;
    } else {
        const mode_t mask = umask(0);
        umask(mask);
        mode = 0666 & ~mask;
    }
    return fchmod(m_beside->descriptor(), mode) == 0;
}

std::optional<Failure> SafeOutput::open(const Inputs& inputs) {
    if (std::optional<Failure> refused = refusal(inputs))
        return refused;
    if (openTemporary())
        return std::nullopt;
    return Failure{StatusUnwritable, name() + QStringLiteral(": cannot be written: ") + reason()};
}

std::optional<Failure> SafeOutput::commit() {
    // Some writes before may have failed, too.
    if (!m_file.flush() || m_file.error() != QFileDevice::NoError)
        return Failure{StatusUnwritable,
                       name() + QStringLiteral(": cannot be written: ") + writeError(m_file)};
    if (!m_beside)
        return copy();
    if (m_beside->putInPlace(m_target))
        return std::nullopt;
    // The folder may be sticky, or the file be a mount point.
    if (errno == ENOSPC || errno == EDQUOT)
        return Failure{StatusUnwritable,
                       name() + QStringLiteral(": cannot be written: ") + reason()};
    return copy();
}

std::optional<Failure> SafeOutput::copy() {
    struct stat before {};
    const bool isNew = m_descriptor < 0 && stat(m_path.constData(), &before) != 0;
    const int descriptor = m_descriptor >= 0 ? m_descriptor : creat(m_path.constData(), 0666);
    bool isWritten = descriptor >= 0 && copyAll(m_file, descriptor);
    const int failed = errno;
    // Nothing rather than half a table.
    if (!isWritten && descriptor >= 0 && S_ISREG(before.st_mode))
        isWritten = ftruncate(descriptor, 0) != 0 && isWritten;
    if (m_descriptor < 0 && descriptor >= 0)
        isWritten = close(descriptor) == 0 && isWritten;
    if (isWritten)
        return std::nullopt;
    if (isNew && descriptor >= 0)
        unlink(m_path.constData());
    errno = failed;
    if (failed == EPIPE)
        return Failure{StatusUnwritable, {}};
    return Failure{StatusUnwritable, name() + QStringLiteral(": cannot be written: ") + reason()};
}

bool leadToOneFile(const QByteArray& a, const QByteArray& b) {
    struct stat first {
    }, second{};
    const bool isFirst = statOf(a, first), isSecond = statOf(b, second);
    if (!isFirst && !isSecond)
        return placeOf(a) == placeOf(b);
    return isFirst && isSecond && first.st_dev == second.st_dev && first.st_ino == second.st_ino &&
           !S_ISCHR(first.st_mode);
}
