// Plays a scenario on the real program: linked to it, started by the toolkit before `main` has
// built the window, it works the dialogs and the window from inside, one command each time that the
// program is idle. PELMARK_DRIVER_SCRIPT names the scenario, PELMARK_DRIVER_STATES the file for the
// states.

#include "driver/actions.h"
#include "driver/give_up.h"
#include "driver/state_file.h"
#include "driver/window_parts.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QShowEvent>
#include <QTimer>

namespace {

constexpr int patienceInMilliseconds = 120'000; // for one command, on the slowest machine
constexpr int pollInMilliseconds = 1;
constexpr int settledPolls = 3; // widgets that were just shown or hidden get their places first
constexpr int graceInMilliseconds = 2'000; // for a program that runs on behind its script

class Driver : public QObject {
public:
    Driver(QList<Command> commands, QObject* parent)
        : QObject(parent), m_commands(std::move(commands)) {
        m_waiting.start();
        parent->installEventFilter(this);
        schedule(0);
    }

    // The first sight of the window, before anything was done to it.
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Show && object == parts::window() && !m_seen) {
            m_seen = true;
            writeState(QStringLiteral("first sight"));
        }
        return false;
    }

private:
    // A timer of its own for each step: while a step's dialog is open, the next one must be able to
    // run inside of it.
    void schedule(int milliseconds) {
        QTimer::singleShot(milliseconds, this, [this] { step(); });
    }

    void step() {
        if (m_next == m_commands.size())
            return endScript();
        const Command& command = m_commands[m_next];
        m_readyPolls = isReady(command) ? m_readyPolls + 1 : 0;
        if (m_readyPolls < settledPolls) {
            if (m_waiting.elapsed() > patienceInMilliseconds)
                giveUp(command.lineNumber, QStringLiteral("waited too long to ") + command.name);
            schedule(pollInMilliseconds);
            return;
        }
        m_readyPolls = 0;
        ++m_next;
        m_waiting.restart();
        schedule(0);
        carryOut(command);
    }

    // A program that the last command has ended comes no further than this.
    void endScript() {
        QTimer::singleShot(graceInMilliseconds, this, [] { std::_Exit(scriptEndedStatus); });
    }

    QList<Command> m_commands;
    qsizetype m_next = 0;
    QElapsedTimer m_waiting;
    int m_readyPolls = 0;
    bool m_seen = false;
};

void startDriver() {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    setStateFile(qEnvironmentVariable("PELMARK_DRIVER_STATES"));
    const QList<Command> commands = readScript(qEnvironmentVariable("PELMARK_DRIVER_SCRIPT"));
    new Driver(commands, QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(startDriver)
