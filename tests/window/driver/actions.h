#pragma once

#include "driver/script.h"

// What a command needs before it can be carried out.
bool isReady(const Command& command);

void carryOut(const Command& command);
