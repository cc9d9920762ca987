#pragma once

#include "stored_rows.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryFile>
#include <string_view>
#include <vector>

// The rows of one chromosome in a sorted run, in the file from `begin` to `end`.
struct Segment {
    quint32 chromosome = 0;
    qint64 begin = 0;
    qint64 end = 0;
};

// A temporary file of sorted runs. It has no name, so that it is gone whenever the program ends.
class RunFile {
public:
    RunFile();

    // False when the file cannot be made or written; error() says why.
    bool startRun();
    bool append(const RowPlace& place, std::string_view text);
    bool flush();

    // Reads bytes from `at` on. False when they cannot be read.
    bool read(qint64 at, char* data, qint64 size);

    const std::vector<std::vector<Segment>>& runs() const { return m_runs; }
    bool hasFailed() const { return !m_error.isEmpty(); }
    QString error() const { return m_error; } // empty while nothing failed

private:
    bool open();
    bool fail(const QString& what);

    QTemporaryFile m_file;
    QByteArray m_buffer;
    qint64 m_size = 0; // with what is in the buffer
    std::vector<std::vector<Segment>> m_runs;
    QString m_error;
};

// Reads segments of a run one after the other, in the order of their ranks.
class RunReader {
public:
    struct Part {
        quint32 rank;
        Segment segment;
    };

    RunReader(RunFile& file, std::vector<Part> parts, qsizetype bufferSize);

    bool atEnd() const { return m_part == m_parts.size(); }
    RowPlace place() const { return m_place; } // its key has the rank instead of the chromosome
    quint32 chromosome() const { return m_parts[m_part].segment.chromosome; }
    std::string_view text() const { return m_text; } // valid until next()
    void next();

private:
    bool provide(qsizetype size);

    RunFile* m_file;
    std::vector<Part> m_parts;
    qsizetype m_bufferSize;
    QByteArray m_buffer;
    qsizetype m_taken = 0; // of the buffer
    qint64 m_at = 0;       // in the file, after the buffer
    size_t m_part = 0;
    RowPlace m_place{};
    std::string_view m_text;
};
