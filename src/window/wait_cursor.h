#pragma once

#include <QtGlobal>

// Shows the wait cursor for as long as it lives, where a file of the given size may take longer
// than a blink to read: from a quick disk that is far larger a file than from a slow network, so
// the limit is a low one.
class WaitCursor {
public:
    explicit WaitCursor(qint64 fileSize); // bytes
    ~WaitCursor();
    Q_DISABLE_COPY_MOVE(WaitCursor)

private:
    const bool m_isShown;
};
