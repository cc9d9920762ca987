#pragma once

#include <QByteArray>
#include <QString>

// Faults that these tests cause, undone at the latest when the test process ends. Where the machine
// does not allow one, the test fails and says so.
namespace machine {

// Programs started from here on obey file permissions, even if this process is root.
void obeyPermissions();

// From here on this process and its children have a mount namespace of their own.
void havePrivateMounts();

// A mount that lasts as long as the object.
class Mounted {
public:
    Mounted(const QString& what, const QString& where); // an existing file or folder, bound
    Mounted(const QString& folder, qint64 bytes);       // a new disk of that size
    ~Mounted();
    Q_DISABLE_COPY_MOVE(Mounted)

private:
    QByteArray m_place;
};

// Preloads failing_files.cpp, which lists the limits, into programs started while this lives. Calls
// fail on files whose path contains `file`.
class FailingFiles {
public:
    FailingFiles(const QString& file, const char* limit, qint64 value);
    ~FailingFiles();
    Q_DISABLE_COPY_MOVE(FailingFiles)

private:
    const char* m_limit;
    QByteArray m_sanitizerOptions;
};

} // namespace machine
