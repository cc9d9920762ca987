#pragma once

#include "command.h"

// pelmark-tools keep and drop: a result file's own lines, those that saved tables, regions and
// lists of names name, or all but those.
int keepCommand(const Arguments& arguments, Streams& streams);
int dropCommand(const Arguments& arguments, Streams& streams);
