#include "inside.h"

#include "dialogs.h"
#include "waiting.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

namespace {

void runTest() {
    const std::unique_ptr<QObject> test(newTest());
    QCoreApplication::exit(QTest::qExec(test.get()));
}

void answerDialog() {
    waiting::until(waiting::isIdleAndActive, runTest);
    dialogs::answer(QLatin1String(fileName));
}

void enterProgram() {
    static const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    beforeTheWindow();
    waiting::until([] { return dialogs::file() != nullptr; }, answerDialog);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(enterProgram)
