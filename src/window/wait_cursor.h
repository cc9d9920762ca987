#pragma once

#include <QtGlobal>

// Shows the wait cursor as long as it lives, unless a file of the given size is read in no time
// even over a slow network.
class WaitCursor {
public:
    explicit WaitCursor(qint64 fileSize); // bytes
    ~WaitCursor();
    Q_DISABLE_COPY_MOVE(WaitCursor)

private:
    const bool m_isShown;
};
