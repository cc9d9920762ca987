#pragma once

#include <QString>

// Exit statuses that no Pelmark ends with.
constexpr int gaveUpStatus = 70;
constexpr int scriptEndedStatus = 71;

// Ends the process at once, past everything that the program does at its own end: the scenario
// cannot be played.
[[noreturn]] void giveUp(int lineNumber, const QString& reason);
