#pragma once

#include "failure.h"
#include "inputs.h"
#include "temporary_files.h"

#include <QByteArray>
#include <QFile>
#include <memory>
#include <optional>

// A file that a command writes, which holds all of the output or none of it.
//
// The output goes to a temporary file beside the one named, which replaces that one only when it is
// complete. For standard output, open descriptors such as /dev/fd/3, devices and pipes, and where
// no file can be made beside the one named, it goes to a nameless file in the folder for temporary
// files and is copied at the end.
class SafeOutput {
public:
    // "-" is standard output. The option is the one that named the output, for messages.
    // `isReadable` says that it may be a terminal.
    SafeOutput(const QByteArray& path, const char* option, bool isReadable = false);
    ~SafeOutput();

    // Opens the temporary file. Refused: an output that is one of the inputs, by device and inode,
    // and standard output that is a terminal where the output is not for reading.
    std::optional<Failure> open(const Inputs& inputs);

    // The temporary file, open for reading and writing.
    QFile& file() { return m_file; }

    // Puts the output in place. Without this call, nothing is left of it.
    std::optional<Failure> commit();

private:
    QString name() const;
    QString terminalRefusal() const;
    std::optional<Failure> refusal(const Inputs& inputs) const;
    std::optional<Failure> copy();
    bool openTemporary();
    bool takeMode();

    QByteArray m_path;
    const char* m_option;
    const bool m_isReadable;
    int m_descriptor;    // that the path leads to, as "-" and /dev/stdout do; -1 for none
    QByteArray m_target; // the path without symbolic links
    std::unique_ptr<NamedTemporaryFile> m_beside;
    QFile m_file;
};

// True where two outputs would be written to the same file or pipe. A device such as /dev/null can
// be shared.
bool leadToOneFile(const QByteArray& a, const QByteArray& b);
