#include "shot.h"

#include "give_up.h"
#include "window_parts.h"

#include <QApplication>
#include <QScreen>
#include <utility>

namespace {

QWidget* subject() {
    QWidget* dialog = QApplication::activeModalWidget();
    return dialog != nullptr ? dialog : parts::window();
}

QImage picture() {
    return subject()->screen()->grabWindow(subject()->winId()).toImage();
}

} // namespace

namespace shot {

// A blinking cursor would make each picture different.
bool isStill() {
    static QImage last;
    QApplication::setCursorFlashTime(0);
    subject()->activateWindow();
    const QImage before = std::exchange(last, picture());
    return subject()->isActiveWindow() && last == before;
}

void save(const QString& fileName) {
    if (!picture().save(fileName))
        giveUp(QStringLiteral("cannot save ") + fileName);
}

} // namespace shot
