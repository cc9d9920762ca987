#include "tools_run.h"

#include <QFile>
#include <QTest>

namespace {

constexpr int patience = 60'000; // ms

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
    process.closeWriteChannel();
    if (!process.waitForFinished(patience))
        qFatal("pelmark-tools does not end");
    const bool isEnd = process.exitStatus() == QProcess::NormalExit;
    return {isEnd ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}
