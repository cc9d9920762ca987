#include "scenario/actions.h"

#include "dialogs.h"
#include "give_up.h"
#include "pointer.h"
#include "scenario/session_state.h"
#include "scenario/state_file.h"
#include "shot.h"
#include "waiting.h"
#include "window_parts.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QTest>
#include <QUrl>
#include <csignal>
#include <sys/resource.h>

namespace {

enum class Needs {
    NoDialog,
    ActiveWindow,
    FileDialog,
    NameDialog,
    AnyDialog,
    FileList,
    ListedFile,
    StillPicture
};

struct Action {
    Needs needs;
    void (*run)(const Command&);
};

QPoint dragEnd; // where `drop` lets go

// A name that no line of a scenario can hold is percent-encoded: "line%0Aend.txt".
QString decoded(const Command& command) {
    return QUrl::fromPercentEncoding(command.rest.toUtf8());
}

template <typename Widget = QWidget>
Widget* visible(const Command& command) {
    auto* widget = parts::as<Widget>(command.word(0));
    if (!widget->isVisible())
        giveUp(QStringLiteral("the widget is hidden"));
    return widget;
}

void chooseByHand(const Command& command) {
    dialogs::focusList();
    dialogs::choose(decoded(command));
}

// Not through the field, which cannot hold every name.
void pickFile(const Command& command) {
    dialogs::choose(decoded(command));
    dialogs::accept();
}

void cancelName(const Command& command) {
    dialogs::fill(command.rest);
    dialogs::cancel();
}

void drag(const Command& command) {
    dragEnd = command.place(2);
    pointer::drag(parts::imageLabel(), command.place(0), dragEnd);
}

void typeText(const Command& command) {
    auto* edit = visible<QLineEdit>(command);
    pointer::click(edit);
    QTest::keySequence(edit, QKeySequence::SelectAll);
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, command.rest.section(u' ', 1));
}

void invokeMethod(const Command& command) {
    const QByteArray name = command.word(0).toLatin1();
    bool result = false;
    if (name == "makeFile") {
        QMetaObject::invokeMethod(parts::window(), "makeFile", Q_RETURN_ARG(bool, result));
        writeState(result ? QStringLiteral("true") : QStringLiteral("false"));
    } else if (!QMetaObject::invokeMethod(parts::window(), name.constData())) {
        giveUp(QStringLiteral("no such method"));
    }
}

void replaceFile(const Command& command) {
    QFile::remove(command.word(0));
    if (command.words().size() > 1 && !QFile::rename(command.word(1), command.word(0)))
        giveUp(QStringLiteral("cannot rename"));
}

// From here on no file grows beyond so many bytes: to the program, a full disk.
void limitFileSize(const Command& command) {
    const auto bytes = static_cast<rlim_t>(command.number(0));
    const rlimit limit{bytes, bytes};
    std::signal(SIGXFSZ, SIG_IGN);
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
        giveUp(QStringLiteral("cannot limit the size of files"));
}

const QMap<QString, Action>& actions() {
    using C = const Command&;
    using enum Needs;
    static const QMap<QString, Action> table{
        // Dialogs.
        {"open", {FileDialog, [](C c) { dialogs::answer(c.rest); }}},
        {"choose", {ListedFile, chooseByHand}},
        {"pick", {ListedFile, pickFile}},
        {"listing", {FileList, [](C) {}}},
        {"cancel", {FileDialog, [](C) { dialogs::cancel(); }}},
        {"name", {NameDialog, [](C c) { dialogs::answer(c.rest); }}},
        {"namecancel", {NameDialog, cancelName}},
        {"fill", {AnyDialog, [](C c) { dialogs::fill(c.rest); }}},
        {"accept", {AnyDialog, [](C) { dialogs::accept(); }}},
        // The window's widgets.
        {"click", {NoDialog, [](C c) { pointer::click(visible(c)); }}},
        {"type", {NoDialog, typeText}},
        {"partly",
         {NoDialog, [](C c) { visible<QCheckBox>(c)->setCheckState(Qt::PartiallyChecked); }}},
        {"keys",
         {ActiveWindow, [](C c) { QTest::keySequence(parts::window(), QKeySequence(c.rest)); }}},
        {"close", {NoDialog, [](C) { parts::window()->close(); }}},
        // The mouse over the plot: in pixels, or from one place of the data to another.
        {"box",
         {NoDialog,
          [](C c) { pointer::drawBox(parts::imageLabel(), c.point(0), c.point(2), c.button(4)); }}},
        {"press",
         {NoDialog, [](C c) { pointer::press(parts::imageLabel(), c.point(0), c.button(2)); }}},
        {"move",
         {NoDialog, [](C c) { pointer::move(parts::imageLabel(), c.point(0), c.button(2)); }}},
        {"hover", {NoDialog, [](C c) { pointer::hover(parts::imageLabel(), c.point(0)); }}},
        {"release",
         {NoDialog, [](C c) { pointer::release(parts::imageLabel(), c.point(0), c.button(2)); }}},
        {"drag", {NoDialog, drag}},
        {"drop", {NoDialog, [](C) { pointer::release(parts::imageLabel(), dragEnd); }}},
        // What can be seen.
        {"dump", {NoDialog, [](C c) { writeState(c.rest); }}},
        {"dialog", {AnyDialog, [](C c) { writeState(c.rest); }}},
        {"grab", {NoDialog, [](C c) { parts::imageLabel()->pixmap().save(c.rest); }}},
        {"shot", {StillPicture, [](C c) { shot::save(c.rest); }}},
        // What no one can do by hand.
        {"set", {NoDialog, [](C c) { setSessionVariable(c.word(0), c.number(1)); }}},
        {"invoke", {NoDialog, invokeMethod}},
        {"invokeindialog", {AnyDialog, invokeMethod}},
        {"replace", {NoDialog, replaceFile}},
        {"limitfiles", {NoDialog, limitFileSize}},
        {"kill", {NoDialog, [](C) { std::raise(SIGKILL); }}},
    };
    return table;
}

const Action& actionOf(const Command& command) {
    const auto found = actions().constFind(command.name);
    if (found == actions().cend())
        giveUp(QStringLiteral("no command \"%1\"").arg(command.name));
    return *found;
}

bool isAnyDialogOpen() {
    return dialogs::file() != nullptr || dialogs::name() != nullptr;
}

} // namespace

void checkName(const Command& command) {
    actionOf(command);
}

bool isReady(const Command& command) {
    switch (actionOf(command).needs) {
    case Needs::NoDialog:
        return waiting::isIdle();
    case Needs::ActiveWindow:
        return waiting::isIdleAndActive();
    case Needs::FileDialog:
        return dialogs::file() != nullptr;
    case Needs::NameDialog:
        return dialogs::name() != nullptr;
    case Needs::AnyDialog:
        return isAnyDialogOpen();
    case Needs::FileList:
        return dialogs::file() != nullptr && dialogs::listedFiles() == command.words();
    case Needs::ListedFile:
        return dialogs::file() != nullptr && dialogs::listedFiles().contains(decoded(command));
    case Needs::StillPicture:
        return (isAnyDialogOpen() || waiting::isIdle()) && shot::isStill();
    }
    return false;
}

void carryOut(const Command& command) {
    actionOf(command).run(command);
}
