#pragma once

#include <QString>

// Exit statuses that Pelmark itself never ends with.
constexpr int gaveUpStatus = 70;
constexpr int scriptEndedStatus = 71;

// Names the current step, for the message if it gives up.
void setStep(const QString& step);

// Writes step and reason to standard error and ends the process at once, without the program's own
// clean-up: what was asked for cannot be done.
[[noreturn]] void giveUp(const QString& reason);
