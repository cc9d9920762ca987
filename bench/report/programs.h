#pragma once

#include "report/samples.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <functional>

// What one run of a program measured, by name, in seconds and bytes.
using Numbers = QMap<QString, double>;

// The same of several runs.
using Series = QMap<QString, Samples>;

// Runs a program once; throws where it fails.
using Run = std::function<Numbers()>;

Run window(const QStringList& arguments); // pelmark_timed: the real window, timed from inside
Run parts(const QStringList& arguments);  // pelmark_parts

// Any command as a whole process. Measures "seconds" from its start to its end and "memory", its
// peak: that of its largest process, and never below this program's own, about 11 MB. Its output is
// discarded. For a pipeline: {"bash", "-o", "pipefail", "-c", "zcat FILE | wc -l"}.
Run command(const QStringList& words);

// Runs all of them in turns, so many times each, so that a disturbance hits all alike.
QList<Series> inTurns(int rounds, const QList<Run>& runs);

bool succeeds(const QStringList& command);

// Creates the folder that all programs run in and makes it the current one, and sets up their
// environment: no display, but a screen of 1920 x 1080.
void enterWorkFolder(const QString& folder);
QString inWorkFolder(const QString& name); // absolute

QByteArray contentOf(const QString& fileName); // empty where it cannot be read

// Throws, so that generated files are removed on the way to main().
[[noreturn]] void fail(const QString& message);
