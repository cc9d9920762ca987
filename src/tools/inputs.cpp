#include "inputs.h"

#include "temporary_files.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

Failure unreadable(const QString& name, int error) {
    return {StatusUnreadable, name + QStringLiteral(": cannot be read: ") +
                                  QString::fromLocal8Bit(std::strerror(error))};
}

// A descriptor; -1, with errno, where the file cannot be opened.
int openToRead(const QByteArray& path) {
    std::FILE* const file = std::fopen(path.constData(), "re");
    if (file == nullptr)
        return -1;
    const int descriptor = dup(fileno(file));
    return std::fclose(file) == 0 ? descriptor : -1;
}

// Copies all that comes into a nameless file. Fails with errno.
int spool(int from, const QString& name, std::optional<Failure>& failure) {
    const int to = openNamelessFile(temporaryFolder());
    const auto cannotKeep = [&] {
        return Failure{StatusUnwritable,
                       name + QStringLiteral(": cannot be kept in ") +
                           QFile::decodeName(temporaryFolder()) + QStringLiteral(": ") +
                           QString::fromLocal8Bit(std::strerror(errno)) +
                           QStringLiteral(". Set TMPDIR to a folder with more room.")};
    };
    if (to < 0) {
        failure = cannotKeep();
        return to;
    }
    std::array<char, 128 * 1024> block{};
    while (!failure) {
        const ssize_t size = read(from, block.data(), block.size());
        if (size == 0)
            break;
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            failure = unreadable(name, errno);
        for (ssize_t at = 0; at < size && !failure;) {
            const ssize_t written = write(to, block.data() + at, static_cast<size_t>(size - at));
            if (written < 0 && errno != EINTR)
                failure = cannotKeep();
            at += std::max<ssize_t>(written, 0);
        }
    }
    return to;
}

} // namespace

Inputs::~Inputs() {
    for (const int descriptor : m_kept)
        close(descriptor);
}

void Inputs::protect(const Inputs& others) {
    m_identities += others.m_identities;
    knowPipes(others);
}

void Inputs::knowPipes(const Inputs& others) {
    for (const Identity& pipe : others.m_pipes)
        if (!m_pipes.contains(pipe))
            m_pipes.append(pipe);
    m_hasStandardInput |= others.m_hasStandardInput;
}

// Asked before it is opened, which could wait for a writer for ever.
bool Inputs::isRead(const QByteArray& word) const {
    struct stat status {};
    if (word == "-")
        return m_hasStandardInput ||
               (fstat(STDIN_FILENO, &status) == 0 && m_pipes.contains(identityOf(status)));
    return stat(word.constData(), &status) == 0 && m_pipes.contains(identityOf(status));
}

std::optional<Failure> Inputs::add(const QByteArray& word) {
    const bool isStandardInput = word == "-";
    const QString name =
        isStandardInput ? QStringLiteral("standard input") : QFile::decodeName(word);
    if (isRead(word)) {
        m_paths.append(name);
        m_names.append(name);
        m_isGood.append(false);
        return Failure{StatusWrongCall,
                       name + QStringLiteral(": can be read only once, and is needed twice. "
                                             "Save it to a file, and name that.")};
    }
    m_hasStandardInput |= isStandardInput;
    const int descriptor = isStandardInput ? dup(STDIN_FILENO) : openToRead(word);
    struct stat status {};
    std::optional<Failure> failure;
    if (descriptor < 0 || fstat(descriptor, &status) != 0)
        failure = unreadable(name, errno);
    if (S_ISDIR(status.st_mode))
        failure = unreadable(name, EISDIR);
    QString path = name;
    const bool isRegular = S_ISREG(status.st_mode);
    int kept = isStandardInput && isRegular ? descriptor : -1; // what the path leads to
    if (S_ISFIFO(status.st_mode))
        m_pipes.append(identityOf(status));
    if (isRegular)
        m_identities.append(identityOf(status));
    else if (!failure)
        kept = spool(descriptor, name, failure);
    if (kept >= 0) {
        m_kept.append(kept);
        path = QStringLiteral("/dev/fd/%1").arg(kept);
    }
    if (descriptor >= 0 && descriptor != kept)
        close(descriptor);
    m_paths.append(path);
    m_names.append(name);
    m_isGood.append(!failure);
    return failure;
}

QString Inputs::named(QString text) const {
    for (qsizetype i = 0; i < m_paths.size(); ++i)
        if (isPiped(i))
            text.replace(m_paths[i], m_names[i]);
    return text;
}

bool Inputs::contains(const struct stat& status) const {
    return S_ISREG(status.st_mode) && m_identities.contains(identityOf(status));
}
