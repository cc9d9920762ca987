#pragma once

#include <QList>
#include <QPoint>
#include <QString>
#include <QStringList>

// One line of a scenario: its first word, and the rest as it stands.
struct Command {
    QString name;
    QString rest;
    int lineNumber = 0;

    QStringList words() const;
    int number(qsizetype word) const;
    QPoint point(qsizetype firstWord) const;
    QString word(qsizetype index, const QString& otherwise = {}) const;
};

// Empty lines and lines that start with '#' are left out.
QList<Command> parseScript(const QString& text);

// The scenario in a UTF-8 file; ends the process where there is none.
QList<Command> readScript(const QString& fileName);
