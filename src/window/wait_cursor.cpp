#include "wait_cursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace {

constexpr qint64 quicklyRead = 8 * 1024 * 1024; // bytes

} // namespace

WaitCursor::WaitCursor(qint64 fileSize) : m_isShown(fileSize > quicklyRead) {
    if (m_isShown)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor() {
    if (m_isShown)
        QGuiApplication::restoreOverrideCursor();
}
