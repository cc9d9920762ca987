#pragma once

#include <QByteArray>
#include <QDir>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

// A run of pelmark-tools in a folder of its own.
class ToolsRun {
public:
    struct Result {
        int status = -1; // -1 where a signal ended it
        QByteArray out;
        QByteArray error;
    };

    ToolsRun();

    static QString program();
    QString path(const QString& name) const { return m_folder.filePath(name); }
    void write(const QString& name, const QByteArray& content) const;
    QByteArray read(const QString& name) const;
    QStringList files() const; // in the folder, hidden ones too

    // Runs the program to its end.
    Result run(const QStringList& words, const QByteArray& input = {}) const;

    // The same with a terminal as standard output; `out` is what that shows, less its carriage
    // returns. For output that fits into the terminal's buffer, 4 kilobytes.
    Result runOnTerminal(const QStringList& words) const;

    // Starts it, for tests that do something to it while it runs.
    void start(QProcess& process, const QStringList& words) const;

private:
    QTemporaryDir m_folder;
};
