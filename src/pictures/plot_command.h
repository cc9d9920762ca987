#pragma once

#include "command.h"

// pelmark-tools plot: the window's pictures without a window.
int plotCommand(const Arguments& arguments, Streams& streams);
