#include "progress_file.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 bytesBetweenReports = 32 * 1024 * 1024;

} // namespace

ProgressFile::ProgressFile(const QString& path, QString name, QIODevice* terminal)
    : QFile(path), m_name(std::move(name)), m_terminal(terminal) {}

ProgressFile::~ProgressFile() {
    if (m_reported > 0)
        m_terminal->write("\r\033[K");
}

qint64 ProgressFile::readData(char* data, qint64 size) {
    const qint64 got = QFile::readData(data, size);
    m_read += std::max<qint64>(got, 0);
    if (m_terminal != nullptr && m_read - m_reported >= bytesBetweenReports)
        report();
    return got;
}

void ProgressFile::report() {
    m_reported = m_read;
    const qint64 percent =
        this->size() > 0 ? std::min<qint64>(100, m_read * 100 / this->size()) : 0;
    m_terminal->write("\r\033[K" + m_name.toUtf8() + ": " + QByteArray::number(percent) + " %");
}
