// Works the real program from inside, at random but the same way for the same seed: boxes anywhere,
// every button whether it is seen or not, check boxes, texts, files, names and cancels. After each
// step the rules are checked that must always hold. PELMARK_MONKEY_SEED and PELMARK_MONKEY_STEPS
// tell what to do; each step is written to standard output.

#include "driver/dialogs.h"
#include "driver/pointer.h"
#include "driver/window_parts.h"
#include "monkey_choices.h"
#include "support/random.h"
#include "window_rules.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <cstdio>

namespace {

constexpr int brokenRuleStatus = 3;
constexpr int stuckStatus = 4;
constexpr int patienceInMilliseconds = 60'000;

void tell(const QString& step) {
    std::printf("%s\n", qPrintable(step));
    std::fflush(stdout); // the next step may end the process
}

[[noreturn]] void giveUp(int status, const QString& why) {
    std::fprintf(stderr, "monkey: %s\n", qPrintable(why));
    std::fflush(stderr);
    std::_Exit(status);
}

class Monkey : public QObject {
public:
    Monkey(std::uint64_t seed, int steps, QObject* parent)
        : QObject(parent), m_random(seed), m_steps(steps) {
        m_waiting.start();
        schedule(0);
    }

private:
    // A timer of its own for each step: while a step's dialog is open, the next one must be able to
    // run inside of it.
    void schedule(int milliseconds) {
        QTimer::singleShot(milliseconds, this, [this] { step(); });
    }

    void step() {
        if (m_waiting.elapsed() > patienceInMilliseconds)
            giveUp(stuckStatus, QStringLiteral("the program is stuck"));
        if (!dialogs::isAnyOpen() && !isIdle())
            return schedule(1);
        m_waiting.restart();
        if (dialogs::isAnyOpen()) {
            schedule(0);
            return answerDialog();
        }
        if (const QStringList broken = brokenRules(); !broken.isEmpty())
            giveUp(brokenRuleStatus, QStringLiteral("broken: ") + broken.join(u';'));
        if (m_steps-- <= 0)
            return end();
        schedule(0);
        act();
    }

    static bool isIdle() {
        const MyWidget* window = parts::window();
        return window != nullptr && window->isVisible() && window->windowHandle()->isExposed() &&
               QThread::currentThread()->loopLevel() == 1;
    }

    void answerDialog() {
        if (dialogs::file() != nullptr)
            return answerFileDialog();
        if (dialogs::name() == nullptr)
            return;
        const QString name = choices::tableName(m_random);
        tell("name " + name);
        m_random.oneIn(5) ? dialogs::cancelName(name) : dialogs::acceptName(name);
    }

    // A name that does not exist cannot be opened: the dialog stays.
    void answerFileDialog() {
        const QString file =
            m_random.oneIn(20) ? QStringLiteral("no such file.txt") : choices::dataFile(m_random);
        const bool cancels = m_random.oneIn(8) && !parts::fileList().isEmpty();
        tell(cancels ? QStringLiteral("cancel") : "open " + file);
        cancels ? dialogs::cancelFile() : dialogs::openFile(file);
    }

    void act() {
        switch (m_random.below(12)) {
        case 0:
        case 1:
        case 2:
        case 3:
            return drawBox();
        case 4:
        case 5:
        case 6:
        case 7:
            return clickButton();
        case 8:
        case 9:
            return clickAny({"checkBox1", "checkBox2"});
        case 10:
            return typeRange();
        default:
            return changeFile();
        }
    }

    QPoint place() {
        const QSize image = parts::imageLabel()->size();
        return m_random.oneIn(4)
                   ? QPoint(m_random.between(-2000, 5000), m_random.between(-2000, 5000))
                   : QPoint(m_random.below(image.width()), m_random.below(image.height()));
    }

    void drawBox() {
        const auto button = m_random.oneOf({Qt::LeftButton, Qt::RightButton, Qt::MiddleButton});
        const QPoint from = place();
        const QPoint to =
            m_random.oneIn(6) ? from + QPoint(m_random.below(3), m_random.below(3)) : place();
        tell(QStringLiteral("box %1 %2 %3 %4").arg(from.x()).arg(from.y()).arg(to.x()).arg(to.y()));
        pointer::press(parts::imageLabel(), from, button);
        for (int moves = m_random.below(4); moves > 0; --moves)
            pointer::move(parts::imageLabel(), place(), button);
        pointer::release(parts::imageLabel(), to, button);
    }

    void clickButton() {
        if (m_random.oneIn(60))
            return end();
        clickAny({"newFileButton", "globalButton", "unzoomButton", "removeButton", "saveButton",
                  "saveRemoveButton"});
    }

    // Also one that is hidden.
    void clickAny(std::initializer_list<const char*> names) {
        const QString name = QLatin1String(m_random.oneOf(names));
        tell("click " + name);
        qobject_cast<QAbstractButton*>(parts::widget(name))->click();
    }

    void typeRange() {
        const char* const name = m_random.oneOf({"rangeStartEdit", "rangeEndEdit"});
        const QString text = choices::rangeText(m_random);
        tell("type " + text);
        qobject_cast<QLineEdit*>(parts::widget(QLatin1String(name)))->setText(text);
    }

    // Somebody else writes to a file, now and then.
    void changeFile() {
        if (!m_random.oneIn(12))
            return;
        QFile file(choices::dataFile(m_random));
        // The log has to hold what the program wrote to it.
        if (file.fileName() == QLatin1String("Pelmark_log.txt"))
            return;
        tell("shorten " + file.fileName());
        file.resize(file.size() * m_random.below(100) / 100);
    }

    void end() {
        m_steps = 0;
        if (m_random.oneIn(2)) {
            tell(QStringLiteral("close"));
            parts::window()->close();
        } else {
            tell(QStringLiteral("exit"));
            qobject_cast<QAbstractButton*>(parts::widget(QStringLiteral("exitButton")))->click();
        }
    }

    Random m_random;
    int m_steps;
    QElapsedTimer m_waiting;
};

void startMonkey() {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    new Monkey(qEnvironmentVariable("PELMARK_MONKEY_SEED").toULongLong(),
               qEnvironmentVariableIntValue("PELMARK_MONKEY_STEPS"), QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(startMonkey)
