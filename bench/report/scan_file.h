#pragma once

#include "generate/scan_layout.h"

#include <QString>

// A generated file in the work folder, there for as long as this lives. It is on the disk and in
// the system's cache, so that nobody is timed who has to wait for the disk.
class ScanFile {
public:
    ScanFile(const ScanLayout& layout, qint64 markers);
    ~ScanFile();
    Q_DISABLE_COPY_MOVE(ScanFile)

    QString path() const { return m_path; }
    double bytes() const { return m_bytes; }

private:
    QString m_path;
    double m_bytes = 0.0;
};
