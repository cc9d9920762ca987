#pragma once

#include <QByteArray>
#include <QString>

// What these tests do to the machine, all of it undone when the test process ends at the latest. A
// machine that does not allow it makes the test fail, which then says so.
namespace machine {

// Programs that are started from here on are held to the permissions of files, even where this
// process is root's.
void obeyPermissions();

// From here on this process and what it starts have mounts of their own.
void havePrivateMounts();

// A file system on a folder, for as long as this lives.
class Mounted {
public:
    Mounted(const QString& what, const QString& where); // a file or folder that is there, again
    Mounted(const QString& folder, qint64 bytes);       // a new disk of that size
    ~Mounted();
    Q_DISABLE_COPY_MOVE(Mounted)

private:
    QByteArray m_place;
};

// Programs that are started while this lives have their files fail, those whose path contains
// `file`. For the limits see failing_files.cpp.
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
