#pragma once

#include "command.h"
#include "failure.h"
#include "plot_request.h"

#include <variant>

// The options that say what `plot` draws, or what is wrong with them.
std::variant<PlotRequest, Failure> plotRequest(const Arguments& arguments);
