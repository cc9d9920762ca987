#pragma once

#include <QStringList>

// What must hold whenever the program is idle, whatever was done to it. Returns the rules that do
// not; the window has to be there.
QStringList brokenRules();
