#include "tools_run.h"

#include <QFile>
#include <QTest>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int patience = 60'000; // ms

ToolsRun::Result endOf(QProcess& process) {
    process.closeWriteChannel();
    if (!process.waitForFinished(patience))
        qFatal("pelmark-tools does not end");
    const bool isEnd = process.exitStatus() == QProcess::NormalExit;
    return {isEnd ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}

} // namespace

ToolsRun::ToolsRun() {
    if (!m_folder.isValid())
        qFatal("no temporary folder");
}

QString ToolsRun::program() {
    return QStringLiteral(PELMARK_TOOLS);
}

void ToolsRun::write(const QString& name, const QByteArray& content) const {
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

QByteArray ToolsRun::read(const QString& name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList ToolsRun::files() const {
    return QDir(m_folder.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                   QDir::Name);
}

void ToolsRun::start(QProcess& process, const QStringList& words) const {
    process.setWorkingDirectory(m_folder.path());
    process.start(program(), words);
    if (!process.waitForStarted(patience))
        qFatal("pelmark-tools does not start");
}

ToolsRun::Result ToolsRun::run(const QStringList& words, const QByteArray& input) const {
    QProcess process;
    start(process, words);
    process.write(input);
    return endOf(process);
}

ToolsRun::Result ToolsRun::runOnTerminal(const QStringList& words) const {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0)
        qFatal("no terminal");
    const int end = open(ptsname(terminal), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (end < 0)
        qFatal("the terminal cannot be opened");
    QProcess process;
    process.setChildProcessModifier([end] { dup2(end, STDOUT_FILENO); });
    start(process, words);
    Result result = endOf(process);
    // Once nobody can write to the terminal, reading fails after the last byte.
    close(end);
    char bytes[4096];
    for (ssize_t count = 0; (count = ::read(terminal, bytes, sizeof bytes)) > 0;)
        result.out.append(bytes, count);
    close(terminal);
    result.out.replace("\r\n", "\n");
    return result;
}
