#include "waiting.h"

#include "dialogs.h"
#include "give_up.h"
#include "window_parts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <memory>

namespace {

constexpr int pollInMilliseconds = 1;
constexpr int settledPolls = 3;
constexpr int patienceInPolls = 120'000;

struct Wait {
    std::function<bool()> isReady;
    std::function<void()> act;
    int polls = 0;
    int readyPolls = 0;
};

void poll(const std::shared_ptr<Wait>& wait) {
    wait->readyPolls = wait->isReady() ? wait->readyPolls + 1 : 0;
    if (wait->readyPolls == settledPolls)
        return wait->act();
    if (++wait->polls > patienceInPolls)
        giveUp(QStringLiteral("waited too long"));
    QTimer::singleShot(pollInMilliseconds, qApp, [wait] { poll(wait); });
}

// A button pressed by its key stays down for a moment before it acts.
bool isAnyButtonDown() {
    const auto buttons = parts::window()->findChildren<QAbstractButton*>();
    return std::any_of(buttons.cbegin(), buttons.cend(),
                       [](const QAbstractButton* button) { return button->isDown(); });
}

} // namespace

namespace waiting {

// When a dialog is gone, its own event loop or the window's constructor may not have returned yet.
bool isIdle() {
    const MyWidget* window = parts::window();
    return !dialogs::isAnyOpen() && window != nullptr && window->isVisible() &&
           window->windowHandle()->isExposed() && QThread::currentThread()->loopLevel() == 1 &&
           !isAnyButtonDown();
}

// Without a window manager no window becomes active by itself.
bool isIdleAndActive() {
    if (isIdle() && !parts::window()->isActiveWindow())
        parts::window()->activateWindow();
    return isIdle() && parts::window()->isActiveWindow();
}

// A timer for each poll: while `act` runs a dialog's event loop, the next wait must go on in it.
void until(std::function<bool()> isReady, std::function<void()> act) {
    const auto wait = std::make_shared<Wait>(Wait{std::move(isReady), std::move(act)});
    QTimer::singleShot(0, qApp, [wait] { poll(wait); });
}

} // namespace waiting
