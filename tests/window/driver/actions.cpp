#include "driver/actions.h"

#include "driver/dialogs.h"
#include "driver/give_up.h"
#include "driver/pointer.h"
#include "driver/state_file.h"
#include "driver/variables.h"
#include "driver/window_parts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QThread>
#include <QUrl>
#include <algorithm>
#include <csignal>
#include <functional>
#include <sys/resource.h>

namespace {

enum class Needs {
    NoDialog,
    ActiveWindow,
    FileDialog,
    NameDialog,
    AnyDialog,
    FileList,
    ListedFile
};

struct Action {
    Needs needs;
    std::function<void(const Command&)> run;
};

Qt::MouseButton button(const Command& command, qsizetype word) {
    const QString name = command.word(word, QStringLiteral("left"));
    return name == u"right"    ? Qt::RightButton
           : name == u"middle" ? Qt::MiddleButton
                               : Qt::LeftButton;
}

// A name that no line of a scenario can hold is written as in addresses: "line%0Aend.txt".
QString decoded(const Command& command) {
    return QUrl::fromPercentEncoding(command.rest.toUtf8());
}

QWidget* namedWidget(const Command& command) {
    QWidget* widget = parts::widget(command.word(0));
    if (widget == nullptr || !widget->isVisible())
        giveUp(command.lineNumber, QStringLiteral("no visible widget \"%1\"").arg(command.word(0)));
    return widget;
}

void dragBox(const Command& command) {
    constexpr int moves = 4;
    const QPoint from = command.point(0), to = command.point(2);
    QWidget* image = parts::imageLabel();
    pointer::press(image, from, button(command, 4));
    for (int i = 1; i <= moves; ++i)
        pointer::move(image, from + (to - from) * i / moves, button(command, 4));
    pointer::release(image, to, button(command, 4));
}

void typeText(const Command& command) {
    auto* edit = qobject_cast<QLineEdit*>(namedWidget(command));
    pointer::click(edit);
    QTest::keySequence(edit, QKeySequence::SelectAll);
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, command.rest.section(u' ', 1));
}

void checkPartly(const Command& command) {
    auto* box = qobject_cast<QCheckBox*>(namedWidget(command));
    if (box == nullptr)
        giveUp(command.lineNumber, QStringLiteral("no check box \"%1\"").arg(command.word(0)));
    box->setCheckState(Qt::PartiallyChecked);
}

void setVariable(const Command& command) {
    if (!variables::set(command.word(0), command.number(1)))
        giveUp(command.lineNumber, QStringLiteral("no variable \"%1\"").arg(command.word(0)));
}

void invokeMethod(const Command& command) {
    const QByteArray name = command.word(0).toLatin1();
    bool result = false;
    if (name == "makeFile") {
        QMetaObject::invokeMethod(parts::window(), "makeFile", Q_RETURN_ARG(bool, result));
        writeState(result ? QStringLiteral("true") : QStringLiteral("false"));
    } else if (!QMetaObject::invokeMethod(parts::window(), name.constData())) {
        giveUp(command.lineNumber, QStringLiteral("no method \"%1\"").arg(command.word(0)));
    }
}

void replaceFile(const Command& command) {
    QFile::remove(command.word(0));
    if (command.words().size() > 1 && !QFile::rename(command.word(1), command.word(0)))
        giveUp(command.lineNumber, QStringLiteral("cannot rename ") + command.word(1));
}

// From here on no file grows beyond so many bytes: to the program a full disk.
void limitFileSize(const Command& command) {
    const auto bytes = static_cast<rlim_t>(command.number(0));
    const rlimit limit{bytes, bytes};
    std::signal(SIGXFSZ, SIG_IGN);
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
        giveUp(command.lineNumber, QStringLiteral("cannot limit the size of files"));
}

const QMap<QString, Action>& actions() {
    static const QMap<QString, Action> table{
        {"open", {Needs::FileDialog, [](const Command& c) { dialogs::openFile(c.rest); }}},
        {"pick", {Needs::ListedFile, [](const Command& c) { dialogs::pickFile(decoded(c)); }}},
        {"cancel", {Needs::FileDialog, [](const Command&) { dialogs::cancelFile(); }}},
        {"listing", {Needs::FileList, [](const Command&) {}}},
        {"name", {Needs::NameDialog, [](const Command& c) { dialogs::acceptName(c.rest); }}},
        {"namecancel", {Needs::NameDialog, [](const Command& c) { dialogs::cancelName(c.rest); }}},
        {"dialog", {Needs::AnyDialog, [](const Command& c) { writeState(c.rest); }}},
        {"dump", {Needs::NoDialog, [](const Command& c) { writeState(c.rest); }}},
        {"click", {Needs::NoDialog, [](const Command& c) { pointer::click(namedWidget(c)); }}},
        {"type", {Needs::NoDialog, typeText}},
        {"partly", {Needs::NoDialog, checkPartly}},
        {"keys",
         {Needs::ActiveWindow,
          [](const Command& c) { QTest::keySequence(parts::window(), QKeySequence(c.rest)); }}},
        {"box", {Needs::NoDialog, dragBox}},
        {"press",
         {Needs::NoDialog,
          [](const Command& c) { pointer::press(parts::imageLabel(), c.point(0), button(c, 2)); }}},
        {"move",
         {Needs::NoDialog,
          [](const Command& c) { pointer::move(parts::imageLabel(), c.point(0), button(c, 2)); }}},
        {"hover",
         {Needs::NoDialog,
          [](const Command& c) { pointer::hover(parts::imageLabel(), c.point(0)); }}},
        {"release",
         {Needs::NoDialog,
          [](const Command& c) {
              pointer::release(parts::imageLabel(), c.point(0), button(c, 2));
          }}},
        {"grab",
         {Needs::NoDialog, [](const Command& c) { parts::imageLabel()->pixmap().save(c.rest); }}},
        {"set", {Needs::NoDialog, setVariable}},
        {"invoke", {Needs::NoDialog, invokeMethod}},
        {"invokeindialog", {Needs::AnyDialog, invokeMethod}},
        {"replace", {Needs::NoDialog, replaceFile}},
        {"limitfiles", {Needs::NoDialog, limitFileSize}},
        {"close", {Needs::NoDialog, [](const Command&) { parts::window()->close(); }}},
        {"kill", {Needs::NoDialog, [](const Command&) { std::raise(SIGKILL); }}},
    };
    return table;
}

const Action& actionOf(const Command& command) {
    const auto found = actions().constFind(command.name);
    if (found == actions().cend())
        giveUp(command.lineNumber, QStringLiteral("no command \"%1\"").arg(command.name));
    return *found;
}

// A button that was pressed by its key stays down for a moment before it acts.
bool isAnyButtonDown() {
    const auto buttons = parts::window()->findChildren<QAbstractButton*>();
    return std::any_of(buttons.cbegin(), buttons.cend(),
                       [](const QAbstractButton* button) { return button->isDown(); });
}

// A dialog's own loop, or the constructor, may still be on its way out when its dialog is gone.
bool isIdle() {
    const MyWidget* window = parts::window();
    return !dialogs::isAnyOpen() && window != nullptr && window->isVisible() &&
           window->windowHandle()->isExposed() && QThread::currentThread()->loopLevel() == 1 &&
           !isAnyButtonDown();
}

// The platform without a screen leaves no window active when a dialog closes.
bool isIdleAndActive() {
    if (isIdle() && !parts::window()->isActiveWindow())
        parts::window()->activateWindow();
    return isIdle() && parts::window()->isActiveWindow();
}

} // namespace

bool isReady(const Command& command) {
    switch (actionOf(command).needs) {
    case Needs::NoDialog:
        return isIdle();
    case Needs::ActiveWindow:
        return isIdleAndActive();
    case Needs::FileDialog:
        return dialogs::file() != nullptr;
    case Needs::NameDialog:
        return dialogs::name() != nullptr;
    case Needs::AnyDialog:
        return dialogs::file() != nullptr || dialogs::name() != nullptr;
    case Needs::FileList:
        return dialogs::file() != nullptr && dialogs::listedFiles() == command.words();
    case Needs::ListedFile:
        return dialogs::file() != nullptr && dialogs::listedFiles().contains(decoded(command));
    }
    return false;
}

void carryOut(const Command& command) {
    actionOf(command).run(command);
}
