#pragma once

#include "command.h"

// pelmark-tools prepare: makes of any result file one that the window opens and shows rightly.
int prepareCommand(const Arguments& arguments, Streams& streams);
