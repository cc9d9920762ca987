#pragma once

#include "command.h"

// pelmark-tools hits: lists the lead markers of a result file.
int hitsCommand(const Arguments& arguments, Streams& streams);
