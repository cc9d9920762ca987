#pragma once

#include "scenario/script.h"

// Gives up unless there is a command of that name.
void checkName(const Command& command);

// Whether the program has reached the state that the command needs.
bool isReady(const Command& command);

void carryOut(const Command& command);
