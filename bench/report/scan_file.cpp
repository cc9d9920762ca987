#include "report/scan_file.h"

#include "report/programs.h"

#include <QFile>
#include <unistd.h>

ScanFile::ScanFile(const ScanLayout& layout, qint64 markers)
    : m_path(inWorkFolder(
          QStringLiteral("%1_%2.txt").arg(QString::fromStdString(layout.name)).arg(markers))) {
    constexpr quint64 seed = 1;
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || !writeScan(file, layout, markers, seed) ||
        !file.flush() || fsync(file.handle()) != 0)
        fail("cannot write " + m_path);
    m_bytes = static_cast<double>(file.size());
}

ScanFile::~ScanFile() {
    QFile::remove(m_path);
}
