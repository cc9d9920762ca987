#pragma once

#include <QStringList>

// What must hold whenever the program is idle, whatever was done to it. Returns the broken rules;
// the window must exist.
QStringList brokenRules();
