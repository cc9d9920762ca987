#pragma once

#include <QFileDevice>
#include <QString>
#include <string_view>

// Writes all of the text. A write that the system cuts short has no reason yet; the next one, of
// what is left, does.
inline bool writeAll(QFileDevice& file, std::string_view text) {
    while (!text.empty()) {
        const qint64 count = file.write(text.data(), static_cast<qint64>(text.size()));
        if (count <= 0)
            return false;
        text.remove_prefix(static_cast<size_t>(count));
    }
    return true;
}

// Why a file could not be written or flushed.
inline QString writeError(QFileDevice& file) {
    file.flush();
    return file.errorString();
}
