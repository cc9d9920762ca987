#pragma once

#include "state.h"

#include <QImage>
#include <QList>
#include <QMap>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// Runs of a driven program, usually the one that plays scenarios, in a working folder of their own
// that holds the data files.
class DrivenRun {
public:
    explicit DrivenRun(const QString& program = QStringLiteral(PELMARK_DRIVEN));

    // For the runs to come; beside or in place of what every run has.
    void setEnvironment(const QString& variable, const QString& value);

    // The only screen of the runs to come, at 96 dots per inch.
    void setScreen(QSize size);

    // The folder of the runs to come, in the one that all paths here start from.
    void setWorkingFolder(const QString& name) { m_workingFolder = name; }

    void addFile(const QString& name, const QByteArray& content) const;
    void addCopy(const QString& name, const QString& original) const;

    // Runs the program to its end. May be called again, as a later run in the same folder.
    void start();

    // The same, worked by a scenario.
    void play(const QStringList& script);

    // The same, and a test failure unless it ended with that status and had nothing to complain of.
    bool playTo(int exitStatus, const QStringList& script);

    // Opens `data` as data.txt, plays the script and leaves by the Exit button, which must succeed.
    bool playOn(const QByteArray& data, const QStringList& script);

    int exitStatus() const { return m_exitStatus; } // -1 when killed, crashed, or never started
    QByteArray standardOutput() const { return m_standardOutput; }
    QStringList complaints() const; // on standard error, less the known one
    bool hasKnownWarning() const;

    State state(const QString& label) const; // the last one with that label; there must be one
    QStringList labels() const;
    QByteArray log() const { return content(QStringLiteral("Pelmark_log.txt")); }

    QString path(const QString& name) const; // of a file in the working folder
    bool exists(const QString& name) const;
    QByteArray content(const QString& name) const;
    QImage image(const QString& name) const { return QImage(path(name)); }

private:
    void readStates();

    QString m_program;
    QTemporaryDir m_folder; // the working folder lies in it
    QTemporaryDir m_home;   // for what Qt itself wants to store
    QMap<QString, QString> m_environment;
    QString m_workingFolder;
    int m_exitStatus = -1;
    QByteArray m_standardOutput;
    QByteArray m_standardError;
    QList<QJsonObject> m_states;
};

extern const char* const logHeader;
