#pragma once

#include "failure.h"

#include <QByteArrayList>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>
#include <sys/stat.h>

// The files that a command reads. Each can be read again and again: what comes from standard input
// or another pipe is kept in a nameless temporary file.
class Inputs {
public:
    Inputs() = default;
    ~Inputs();
    Inputs(const Inputs&) = delete;
    Inputs& operator=(const Inputs&) = delete;

    // Adds a file; "-" is standard input. Fails where it cannot be opened for reading, or is a pipe
    // that is read already; it is then listed, but not good.
    std::optional<Failure> add(const QByteArray& word);

    // Makes contains() know the files of another list too, and add() its pipes.
    void protect(const Inputs& others);

    // Only the second.
    void knowPipes(const Inputs& others);

    // What to open, index-aligned with the files added, and how to call it.
    const QStringList& paths() const { return m_paths; }
    const QStringList& names() const { return m_names; }
    bool isPiped(qsizetype i) const { return m_paths[i] != m_names[i]; }
    bool isGood(qsizetype i) const { return m_isGood[i]; }

    // Replaces the paths in a text by the names that the user knows.
    QString named(QString text) const;

    // True where one of the files is the one with this status, by device and inode. Devices and
    // pipes do not count.
    bool contains(const struct stat& status) const;

private:
    struct Identity {
        dev_t device;
        ino_t inode;
        bool operator==(const Identity&) const = default;
    };

    static Identity identityOf(const struct stat& status) { return {status.st_dev, status.st_ino}; }
    bool isRead(const QByteArray& word) const;

    QStringList m_paths;
    QStringList m_names;
    QList<bool> m_isGood;
    QList<Identity> m_identities; // of the regular files
    QList<Identity> m_pipes;
    bool m_hasStandardInput = false;
    QList<int> m_kept; // descriptors that paths lead to
};
