#include "run_file.h"

#include "file_writing.h"
#include "titles.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cstring>
#include <sys/stat.h>
#include <utility>

namespace {

constexpr qsizetype writingSize = 1 << 20; // bytes

// What stands before each text.
struct RowHeader {
    quint64 arrival;
    int position;
    quint32 textSize;
};

template <typename Value>
void appendBytes(const Value& value, QByteArray& bytes) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// Where the folder for temporary files is missing, Qt would take the root of the file system.
QString fileTemplate() {
    const QString folder = qEnvironmentVariable("TMPDIR");
    return (folder.isEmpty() ? QDir::tempPath() : folder) + QStringLiteral("/pelmark.XXXXXX");
}

// False on most systems, which can make files without a name.
bool hasName(const QTemporaryFile& file) {
    struct stat status {};
    return fstat(file.handle(), &status) != 0 || status.st_nlink > 0;
}

} // namespace

RunFile::RunFile() : m_file(fileTemplate()) {}

bool RunFile::fail(const QString& what) {
    m_error = QStringLiteral("%1 a temporary file in %2: %3")
                  .arg(what, QFileInfo(m_file.fileTemplate()).path(), writeError(m_file));
    return false;
}

bool RunFile::open() {
    if (m_file.isOpen())
        return true;
    if (!m_file.open())
        return fail(QStringLiteral("Cannot create"));
    return !hasName(m_file) || QFile::remove(m_file.fileName()) ||
           fail(QStringLiteral("Cannot remove"));
}

bool RunFile::startRun() {
    m_runs.emplace_back();
    return open();
}

bool RunFile::append(const RowPlace& place, std::string_view text) {
    const RowHeader header{place.arrival, positionOf(place.key), static_cast<quint32>(text.size())};
    const quint32 chromosome = chromosomeOf(place.key);
    std::vector<Segment>& run = m_runs.back();
    if (run.empty() || run.back().chromosome != chromosome)
        run.push_back({chromosome, m_size, m_size});
    appendBytes(header, m_buffer);
    m_buffer.append(text.data(), static_cast<qsizetype>(text.size()));
    m_size += static_cast<qint64>(sizeof header + text.size());
    run.back().end = m_size;
    return m_buffer.size() < writingSize || flush();
}

bool RunFile::flush() {
    if (!writeAll(m_file, viewOf(m_buffer)) || !m_file.flush())
        return fail(QStringLiteral("Cannot write"));
    m_buffer.resize(0);
    return true;
}

bool RunFile::read(qint64 at, char* data, qint64 size) {
    if (m_file.seek(at) && m_file.read(data, size) == size)
        return true;
    return fail(QStringLiteral("Cannot read"));
}

RunReader::RunReader(RunFile& file, std::vector<Part> parts, qsizetype bufferSize)
    : m_file(&file), m_parts(std::move(parts)), m_bufferSize(bufferSize) {
    if (!atEnd())
        m_at = m_parts.front().segment.begin;
    next();
}

void RunReader::next() {
    if (!atEnd() && m_taken == m_buffer.size() && m_at == m_parts[m_part].segment.end) {
        ++m_part;
        if (!atEnd())
            m_at = m_parts[m_part].segment.begin;
    }
    RowHeader header{};
    if (atEnd() || !provide(sizeof header)) {
        m_part = m_parts.size();
        return;
    }
    std::memcpy(&header, m_buffer.constData() + m_taken, sizeof header);
    const auto size = qsizetype{sizeof header} + qsizetype{header.textSize};
    if (!provide(size)) {
        m_part = m_parts.size();
        return;
    }
    m_place = {rowKey(m_parts[m_part].rank, header.position), header.arrival};
    m_text = {m_buffer.constData() + m_taken + sizeof header, header.textSize};
    m_taken += size;
}

// Reads until the buffer has as many bytes that are not taken.
bool RunReader::provide(qsizetype size) {
    const qsizetype left = m_buffer.size() - m_taken;
    if (left >= size)
        return true;
    const qint64 inSegment = std::min<qint64>(m_bufferSize, m_parts[m_part].segment.end - m_at);
    const qint64 more = std::max<qint64>(inSegment, size - left);
    m_buffer.remove(0, m_taken);
    m_taken = 0;
    m_buffer.resize(left + more);
    m_at += more;
    return m_file->read(m_at - more, m_buffer.data() + left, more);
}
