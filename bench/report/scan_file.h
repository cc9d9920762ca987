#pragma once

#include "generate/scan_layout.h"

#include <QString>

// A generated file in the work folder, removed by the destructor. It has been flushed to the disk
// and is still in the page cache, so that no measurement waits for the disk.
class ScanFile {
public:
    ScanFile(const ScanLayout& layout, qint64 markers); // throws where it cannot write
    ~ScanFile();
    Q_DISABLE_COPY_MOVE(ScanFile)

    QString path() const { return m_path; }
    double bytes() const { return m_bytes; }

private:
    QString m_path;
    double m_bytes = 0.0;
};
