// Plays a scenario on the real program: Qt starts it before `main` has built the window, and it
// then works the dialogs and the window from inside, one command each time the program is idle.
// PELMARK_DRIVER_SCRIPT names the scenario; PELMARK_DRIVER_STATES the file for the states, if any
// are wanted.

#include "give_up.h"
#include "scenario/actions.h"
#include "scenario/state_file.h"
#include "waiting.h"
#include "window_parts.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QScreen>
#include <QTimer>
#include <cstdlib>

namespace {

constexpr int graceInMilliseconds = 2'000; // for a program that its last command does not end

// The window as it is first shown, before anything was done to it.
class FirstSight : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Show && object == parts::window()) {
            writeState(QStringLiteral("first sight"));
            parent()->removeEventFilter(this);
        }
        return false;
    }
};

void play(const QList<Command>& commands, qsizetype next) {
    if (next == commands.size()) {
        QTimer::singleShot(graceInMilliseconds, qApp, [] { std::_Exit(scriptEndedStatus); });
        return;
    }
    const Command command = commands[next];
    const auto isNext = [command] {
        setStep(command.step());
        return isReady(command);
    };
    // The next wait first: the command may open a dialog, which the next one answers.
    waiting::until(isNext, [commands, next] {
        play(commands, next + 1);
        setStep(commands[next].step());
        carryOut(commands[next]);
    });
}

// The real mouse is sent to a corner of the screen: resting where a window comes up, it would
// highlight what lies under it.
void startDriver() {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QList<Command> commands = readScript(qEnvironmentVariable("PELMARK_DRIVER_SCRIPT"));
    for (const Command& command : commands) {
        setStep(command.step());
        checkName(command);
    }
    if (qEnvironmentVariableIsSet("PELMARK_DRIVER_STATES")) {
        setStateFile(qEnvironmentVariable("PELMARK_DRIVER_STATES"));
        qApp->installEventFilter(new FirstSight(qApp));
    }
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    play(commands, 0);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(startDriver)
