#pragma once

#include "refusal.h"
#include "table_format.h"
#include "unpacked.h"

#include <QFile>
#include <QStringList>
#include <optional>
#include <variant>

// A packed or plain table on disk, read from its start each time it is opened.
class InputFile {
public:
    explicit InputFile(const QString& path,
                       UnpackedDevice::LineEnds lineEnds = UnpackedDevice::LineEnds::Unified)
        : m_path(path), m_file(path), m_unpacked(m_file, lineEnds) {}

    // Refuses a file that cannot be opened, and one that is no table.
    std::optional<Refusal> open();

    UnpackedDevice& text() { return m_unpacked; }
    qint64 bytesRead() const { return m_unpacked.packedBytesRead(); } // of the packed file

    // Why it could not be read to its end.
    Refusal failure() const;

private:
    const QString m_path;
    QFile m_file;
    UnpackedDevice m_unpacked;
};

// Finds out how the tables in files are laid out, from their first lines. Those after the first
// must have its titles.
std::variant<QList<Understanding>, Refusal> understandFiles(const QStringList& paths,
                                                            const PrepareOptions& options);
