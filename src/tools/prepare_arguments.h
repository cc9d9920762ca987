#pragma once

#include "command.h"
#include "failure.h"
#include "prepare_options.h"

#include <string_view>
#include <variant>

// The options of `prepare` as its engine takes them, or what is wrong with them. `head` is the
// start of the first table: it decides whether the value of --test is a column or a test's name.
std::variant<PrepareOptions, Failure> prepareOptions(const Arguments& arguments,
                                                     std::string_view head, bool isWhole);
