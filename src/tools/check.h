#pragma once

#include "command.h"

// pelmark-tools check: says what the window makes of each file, and what to do about it.
int check(const Arguments& arguments, Streams& streams);
