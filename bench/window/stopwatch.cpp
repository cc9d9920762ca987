// The whole program with a stopwatch inside. Qt starts it before `main` has built the window; it
// opens the file named by the first argument, takes the steps named by the others, and prints how
// long each took: from the dialog's answer, or the mouse click, until the plot was painted on the
// window. A file that ends the program is timed to the end. Qt's dialog waits for its threads and
// writes its settings before it returns, which is reported as a time of its own. Memory is the
// process's peak, before and after opening.

#include "dialogs.h"
#include "give_up.h"
#include "waiting.h"
#include "window/steps.h"
#include "window_parts.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

namespace {

QElapsedTimer watch;
bool isOpening = true;

double elapsedSeconds() {
    return static_cast<double>(watch.nsecsElapsed()) * 1e-9;
}

void tell(const QString& name, double number) {
    std::printf("%s %.6f\n", qPrintable(name), number);
    std::fflush(stdout);
}

void tellEnd() {
    if (isOpening && watch.isValid())
        tell(QStringLiteral("end"), elapsedSeconds());
}

// In bytes.
double peakMemory() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0.0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return 1024.0 * line.simplified().split(' ').value(1).toDouble();
    return 0.0;
}

class Stopwatch : public QObject {
public:
    Stopwatch(QStringList steps, QObject* application)
        : QObject(application), m_steps(std::move(steps)), m_file(m_steps.takeFirst()) {
        application->installEventFilter(this);
        waiting::until([] { return dialogs::file() != nullptr; }, [this] { openFile(); });
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint && m_isWaiting && isNewPlot(object)) {
            m_oldPlot = plotKey();
            // By then the whole window is painted, and handed to the screen.
            QTimer::singleShot(0, this, [this] { endStep(); });
        }
        return false;
    }

private:
    static qint64 plotKey() {
        return parts::window() == nullptr ? 0 : parts::imageLabel()->pixmap().cacheKey();
    }

    bool isNewPlot(const QObject* painted) const {
        return parts::window() != nullptr && painted == parts::imageLabel() &&
               plotKey() != m_oldPlot;
    }

    void openFile() {
        auto* const dialog = dialogs::file();
        connect(dialog, &QFileDialog::accepted, this, [] { watch.start(); });
        // The dialog's children are destroyed last, in the order they were made.
        connect(new QObject(dialog), &QObject::destroyed, this, [this] {
            tell(QStringLiteral("dialog"), elapsedSeconds());
            startStep(QStringLiteral("open"));
        });
        tell(QStringLiteral("memory-before"), peakMemory());
        dialogs::answer(m_file);
    }

    void startStep(const QString& name) {
        m_name = name;
        m_oldPlot = plotKey();
        m_isWaiting = true;
        setStep(name);
        waiting::until([this] { return !m_isWaiting && waiting::isIdle(); },
                       [this] { nextStep(); });
        watch.start();
    }

    void endStep() {
        tell(m_name, elapsedSeconds());
        if (isOpening)
            tell(QStringLiteral("memory"), peakMemory());
        isOpening = false;
        m_isWaiting = false;
    }

    void nextStep() {
        if (m_steps.isEmpty())
            return QCoreApplication::quit();
        const Step step = stepNamed(m_steps.takeFirst());
        startStep(step.name);
        step.act();
    }

    QStringList m_steps;
    const QString m_file;
    QString m_name;
    qint64 m_oldPlot = 0;
    bool m_isWaiting = false;
};

void startStopwatch() {
    const QStringList steps = QCoreApplication::arguments().mid(1);
    if (steps.isEmpty()) {
        std::fputs("usage: pelmark_timed FILE [STEP...]\n", stderr);
        std::exit(2);
    }
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    std::atexit(tellEnd);
    new Stopwatch(steps, QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(startStopwatch)
