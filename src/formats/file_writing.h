#pragma once

#include <QByteArrayView>
#include <QFileDevice>
#include <QString>

// Writes all of the text. A write that the system cuts short has no reason yet; the next one, of
// what is left, does.
inline bool writeAll(QIODevice& file, QByteArrayView text) {
    while (!text.isEmpty()) {
        const qint64 count = file.write(text.data(), text.size());
        if (count <= 0)
            return false;
        text = text.sliced(static_cast<qsizetype>(count));
    }
    return true;
}

// Why a file could not be written or flushed.
inline QString writeError(QFileDevice& file) {
    file.flush();
    return file.errorString();
}
