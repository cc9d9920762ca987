#pragma once

#include <QList>
#include <QPoint>
#include <QString>
#include <QStringList>

// One line of a scenario: its first word, and the rest as it stands. Asking for a word that is not
// there, or not of that kind, gives up.
struct Command {
    QString name;
    QString rest;
    int lineNumber = 0;

    QStringList words() const;
    QString word(qsizetype index) const;
    int number(qsizetype word) const;
    double real(qsizetype word) const;
    QPoint point(qsizetype firstWord) const;          // pixels of the plot
    QPoint place(qsizetype firstWord) const;          // data: see places.h
    Qt::MouseButton button(qsizetype lastWord) const; // the left one where there is no such word
    QString step() const;
};

// The scenario in a UTF-8 file, without empty lines and lines that start with '#'. Gives up where
// there is none.
QList<Command> readScript(const QString& fileName);
