#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

// What a program told on its standard output: names and numbers.
using Told = QMap<QString, double>;

// The programs that measure, started without a screen, the plot as on one of 1920 x 1080. A program
// that fails ends this one.
Told runWindow(const QStringList& arguments); // the whole program with the stopwatch inside
Told runParts(const QStringList& arguments);

// How many seconds any other program takes from its start to its end; negative when it is not
// there or fails. What it tells is thrown away.
double secondsOf(const QStringList& command);

// In which the programs run, and their files lie. Ends the process where it can't be used.
void setWorkFolder(const QString& folder);
QString inWorkFolder(const QString& name);
