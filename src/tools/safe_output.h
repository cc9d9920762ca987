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
// complete. For standard output, devices and pipes, and where no file can be made beside the one
// named, it goes to a nameless file in the folder for temporary files and is copied at the end.
class SafeOutput {
public:
    // "-" is standard output. `isReadable` says that it may be a terminal.
    explicit SafeOutput(const QByteArray& path, bool isReadable = false);
    ~SafeOutput();

    // Opens the temporary file. Refused: an output that is one of the inputs, by device and inode,
    // and standard output that is a terminal where the output is not for reading.
    std::optional<Failure> open(const Inputs& inputs);

    // The temporary file, open for reading and writing.
    QFile& file() { return m_file; }

    // Puts the output in place. Without this call, nothing is left of it.
    std::optional<Failure> commit();

private:
    bool isStandardOutput() const { return m_path == "-"; }
    QString name() const;
    std::optional<Failure> refusal(const Inputs& inputs) const;
    std::optional<Failure> copy();
    bool openTemporary();
    bool takeMode();

    QByteArray m_path;
    const bool m_isReadable;
    QByteArray m_target; // the path without symbolic links
    std::unique_ptr<NamedTemporaryFile> m_beside;
    QFile m_file;
};
