#include "temporary_files.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

// The names that a signal removes: a plain array, since a handler may touch nothing else. A slot is
// in use while its name is not empty; the first character is written last and cleared first.
std::array<std::array<char, PATH_MAX>, 4> names{};

constexpr int signalsHandled[] = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};

extern "C" void removeAndEnd(int signal) {
    for (const auto& name : names)
        if (name[0] != '\0')
            unlink(name.data());
    struct sigaction byDefault {};
    byDefault.sa_handler = SIG_DFL;
    // Takes effect when this handler returns.
    if (sigaction(signal, &byDefault, nullptr) != 0 || raise(signal) != 0)
        _exit(128 + signal);
}

// A signal that the caller ignores, as nohup does, stays ignored.
void handleSignals() {
    for (const int signal : signalsHandled) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
            continue;
        action.sa_handler = removeAndEnd;
        sigaction(signal, &action, nullptr);
    }
}

class BlockedSignals {
public:
    BlockedSignals() {
        sigset_t blocked;
        sigemptyset(&blocked);
        for (const int signal : signalsHandled)
            sigaddset(&blocked, signal);
        sigprocmask(SIG_BLOCK, &blocked, &m_before);
    }
    ~BlockedSignals() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t m_before{};
};

} // namespace

QByteArray temporaryFolder() {
    return QFile::encodeName(QDir::tempPath());
}

int openNamelessFile(const QByteArray& folder) {
    QByteArray name = folder + "/pelmark-tools.XXXXXX";
    const BlockedSignals blocked;
    const int descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (descriptor >= 0)
        unlink(name.constData());
    return descriptor;
}

NamedTemporaryFile::NamedTemporaryFile(const QByteArray& path) {
    QByteArray name = path + ".XXXXXX";
    auto* const slot =
        std::find_if(names.begin(), names.end(), [](const auto& used) { return used[0] == '\0'; });
    if (slot == names.end() || name.size() >= PATH_MAX) {
        errno = ENAMETOOLONG;
        return;
    }
    handleSignals();
    const BlockedSignals blocked;
    m_descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (m_descriptor < 0)
        return;
    m_slot = static_cast<int>(slot - names.begin());
    std::memcpy(slot->data(), name.constData(), static_cast<size_t>(name.size()) + 1);
}

NamedTemporaryFile::~NamedTemporaryFile() {
    if (m_slot >= 0)
        unlink(names[static_cast<size_t>(m_slot)].data());
    forget();
    if (m_descriptor >= 0)
        close(m_descriptor);
}

bool NamedTemporaryFile::putInPlace(const QByteArray& path) {
    const BlockedSignals blocked;
    if (std::rename(names[static_cast<size_t>(m_slot)].data(), path.constData()) != 0)
        return false;
    forget();
    return true;
}

void NamedTemporaryFile::forget() {
    if (m_slot >= 0)
        names[static_cast<size_t>(m_slot)][0] = '\0';
    m_slot = -1;
}
