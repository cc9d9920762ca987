// The whole program with a stopwatch inside: linked to it, started by the toolkit before `main` has
// built the window, it opens the file named by the first argument, does the steps named by the
// others, and tells on standard output how long each took: from the dialog's answer, or the mouse
// click, until the plot was painted on the window. A file that ends the program is timed to the
// end. Before it answers, the toolkit's dialog waits for its threads and has its settings written
// to the disk, which is told as a time of its own. The memory is the most that the process ever
// had, before and after opening.

#include "window/pointing.h"
#include "window/steps.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int settledPolls = 20; // widgets that were shown or hidden get their places first

QElapsedTimer watch;
bool isOpening = true;

constexpr int patienceInMilliseconds = 300'000;

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
        schedule([this] { openFile(); });
        schedule([this] { giveUp(); }, patienceInMilliseconds);
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint && m_isWaiting && isNewPlot(object)) {
            m_isWaiting = false;
            // By then the whole window is painted, and handed to the screen.
            schedule([this] { endStep(); });
        }
        return false;
    }

private:
    template <typename Task>
    void schedule(Task task, int milliseconds = 0) {
        QTimer::singleShot(milliseconds, this, task);
    }

    [[noreturn]] void giveUp() const {
        qCritical("waited too long for a plot: %s", qPrintable(m_name));
        std::_Exit(2);
    }

    static qint64 plotKey() {
        const QLabel* const label = pointing::plotLabel();
        return label == nullptr ? 0 : label->pixmap().cacheKey();
    }

    bool isNewPlot(const QObject* painted) const {
        return painted == pointing::plotLabel() && plotKey() != m_oldPlot;
    }

    void openFile() {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible())
            return schedule([this] { openFile(); }, 1);
        dialog->findChild<QLineEdit*>()->setText(m_file);
        connect(dialog, &QFileDialog::accepted, this, [] { watch.start(); });
        // A dialog's children end after its own farewell, in their order.
        connect(new QObject(dialog), &QObject::destroyed, this, [this] {
            tell(QStringLiteral("dialog"), elapsedSeconds());
            startStep(QStringLiteral("open"));
        });
        tell(QStringLiteral("memory-before"), peakMemory());
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    }

    void startStep(const QString& name) {
        m_name = name;
        m_oldPlot = plotKey();
        m_isWaiting = true;
        watch.start();
    }

    void endStep() {
        tell(m_name, elapsedSeconds());
        if (isOpening)
            tell(QStringLiteral("memory"), peakMemory());
        isOpening = false;
        settle();
    }

    void settle(int polls = 0) {
        if (polls < settledPolls || !pointing::isWindowShown())
            return schedule([this, polls] { settle(polls + 1); }, 1);
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
