// Works the real program from inside, at random but the same way for the same seed: boxes anywhere,
// every button whether it is seen or not, check boxes, texts, files, names and cancels. After each
// step the rules are checked that must always hold. PELMARK_MONKEY_SEED and PELMARK_MONKEY_STEPS
// tell what to do; each step is written to standard output.

#include "dialogs.h"
#include "give_up.h"
#include "monkey_choices.h"
#include "pointer.h"
#include "support/random.h"
#include "waiting.h"
#include "window_parts.h"
#include "window_rules.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <cstdio>

namespace {

void tell(const QString& step) {
    std::printf("%s\n", qPrintable(step));
    std::fflush(stdout); // the next step may end the process
}

class Monkey : public QObject {
public:
    Monkey(std::uint64_t seed, int steps, QObject* parent)
        : QObject(parent), m_random(seed), m_steps(steps) {
        waitForNextStep();
    }

private:
    void waitForNextStep() {
        waiting::until([] { return dialogs::isAnyOpen() || waiting::isIdle(); },
                       [this] { step(); });
    }

    // The next wait first: a step may open a dialog, which the next one answers.
    void step() {
        if (dialogs::isAnyOpen()) {
            waitForNextStep();
            return answerDialog();
        }
        if (const QStringList broken = brokenRules(); !broken.isEmpty())
            giveUp(QStringLiteral("broken: ") + broken.join(u';'));
        if (m_steps-- <= 0)
            return end();
        waitForNextStep();
        act();
    }

    void answerDialog() {
        if (dialogs::file() != nullptr)
            return answerFileDialog();
        if (dialogs::name() == nullptr)
            return;
        const QString name = choices::tableName(m_random);
        tell("name " + name);
        dialogs::fill(name);
        m_random.oneIn(5) ? dialogs::cancel() : dialogs::accept();
    }

    // A name that does not exist cannot be opened: the dialog stays.
    void answerFileDialog() {
        const QString file =
            m_random.oneIn(20) ? QStringLiteral("no such file.txt") : choices::dataFile(m_random);
        const bool cancels = m_random.oneIn(8) && !parts::fileList().isEmpty();
        tell(cancels ? QStringLiteral("cancel") : "open " + file);
        cancels ? dialogs::cancel() : dialogs::answer(file);
    }

    void act() {
        const int choice = m_random.below(12);
        if (choice < 4)
            return drawBox();
        if (choice < 8)
            return clickButton();
        if (choice < 10)
            return clickAny({"checkBox1", "checkBox2"});
        return choice == 10 ? typeRange() : changeFile();
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
        parts::as<QAbstractButton>(name)->click();
    }

    void typeRange() {
        const char* const name = m_random.oneOf({"rangeStartEdit", "rangeEndEdit"});
        const QString text = choices::rangeText(m_random);
        tell("type " + text);
        parts::as<QLineEdit>(QLatin1String(name))->setText(text);
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
            parts::as<QAbstractButton>(QStringLiteral("exitButton"))->click();
        }
    }

    Random m_random;
    int m_steps;
};

void startMonkey() {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    new Monkey(qEnvironmentVariable("PELMARK_MONKEY_SEED").toULongLong(),
               qEnvironmentVariableIntValue("PELMARK_MONKEY_STEPS"), QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(startMonkey)
