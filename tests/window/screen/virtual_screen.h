#pragma once

#include <QProcess>
#include <QStringList>

// An X server of its own, on a display that is free, and the hands that work on it.
class VirtualScreen {
public:
    ~VirtualScreen();

    bool start(QSize size); // false, with a word on standard error, when there is no server
    QByteArray display() const { return m_display; }

private:
    QProcess m_server;
    QByteArray m_display;
};

// However this process ends, that one is not left behind.
void endWithThisProcess(QProcess& process);

// Runs xdotool and gives what it prints.
QByteArray xdotool(const QStringList& arguments);
