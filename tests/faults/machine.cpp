#include "machine.h"

#include <QFile>
#include <cerrno>
#include <cstring>
#include <linux/capability.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

void mustWork(bool worked, const char* what) {
    if (!worked)
        qFatal("this machine does not allow to %s: %s", what, std::strerror(errno));
}

void writeTo(const char* file, const QByteArray& text) {
    QFile out(file);
    mustWork(out.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                 out.write(text) == text.size(),
             "map users");
}

// In a user namespace of its own, an ordinary user may mount too.
void becomeRootOfOwn() {
    const QByteArray user = QByteArray::number(getuid()), group = QByteArray::number(getgid());
    mustWork(unshare(CLONE_NEWUSER) == 0, "have users of its own");
    writeTo("/proc/self/setgroups", "deny");
    writeTo("/proc/self/uid_map", "0 " + user + " 1");
    writeTo("/proc/self/gid_map", "0 " + group + " 1");
}

} // namespace

namespace machine {

// Drops the capabilities with which root ignores permissions.
void obeyPermissions() {
    for (const int capability : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH, CAP_FOWNER})
        if (geteuid() == 0)
            mustWork(prctl(PR_CAPBSET_DROP, capability, 0, 0, 0) == 0, "obey permissions");
}

void havePrivateMounts() {
    if (geteuid() != 0)
        becomeRootOfOwn();
    mustWork(unshare(CLONE_NEWNS) == 0, "have mounts of its own");
    mustWork(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0,
             "keep its mounts to itself");
}

Mounted::Mounted(const QString& what, const QString& where) : m_place(QFile::encodeName(where)) {
    mustWork(mount(QFile::encodeName(what).constData(), m_place.constData(), nullptr, MS_BIND,
                   nullptr) == 0,
             "mount a file again");
}

Mounted::Mounted(const QString& folder, qint64 bytes) : m_place(QFile::encodeName(folder)) {
    const QByteArray options = "size=" + QByteArray::number(bytes);
    mustWork(mount("disk", m_place.constData(), "tmpfs", 0, options.constData()) == 0,
             "mount a disk");
}

Mounted::~Mounted() {
    umount2(m_place.constData(), MNT_DETACH);
}

// The address sanitizer must not insist on being the first library.
FailingFiles::FailingFiles(const QString& file, const char* limit, qint64 value)
    : m_limit(limit), m_sanitizerOptions(qgetenv("ASAN_OPTIONS")) {
    qputenv("ASAN_OPTIONS", m_sanitizerOptions + ":verify_asan_link_order=0");
    qputenv("LD_PRELOAD", PELMARK_FAILING_FILES);
    qputenv("PELMARK_FAULT_FILE", QFile::encodeName(file));
    qputenv(limit, QByteArray::number(value));
}

FailingFiles::~FailingFiles() {
    qputenv("ASAN_OPTIONS", m_sanitizerOptions);
    for (const char* variable : {"LD_PRELOAD", "PELMARK_FAULT_FILE", m_limit})
        qunsetenv(variable);
}

} // namespace machine
