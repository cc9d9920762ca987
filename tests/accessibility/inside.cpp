#include "inside.h"

#include "hfile.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>

namespace {

constexpr int pollInMilliseconds = 5;

// Also while the dialog is open inside of the window's constructor.
template <typename Function>
void soon(Function function) {
    QTimer::singleShot(pollInMilliseconds, qApp, function);
}

void runTest() {
    MyWidget* window = inside::window();
    if (window == nullptr || !QTest::qWaitForWindowExposed(window))
        return soon(runTest);
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window))
        qFatal("the window does not become active");
    const std::unique_ptr<QObject> test(newTest());
    QCoreApplication::exit(QTest::qExec(test.get()));
}

void answerDialog() {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr)
        return soon(answerDialog);
    soon(runTest);
    dialog->findChild<QLineEdit*>()->setText(QLatin1String(fileName));
    dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
}

void enterProgram() {
    static const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    beforeTheWindow();
    soon(answerDialog);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(enterProgram)

namespace inside {

MyWidget* window() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<MyWidget*>(widget); window && window->isVisible())
            return window;
    return nullptr;
}

QWidget* widget(const QString& objectName) {
    auto* widget = window()->findChild<QWidget*>(objectName);
    if (widget == nullptr)
        qFatal("no widget %s", qPrintable(objectName));
    return widget;
}

} // namespace inside
