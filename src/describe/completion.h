#pragma once

#include "command.h"

#include <QByteArray>

// The script that completes pelmark-tools in a shell: commands, options, the choices of an option,
// and names of files where a file is expected.
QByteArray bashCompletion(const std::vector<CommandSpec>& commands);
QByteArray zshCompletion(const std::vector<CommandSpec>& commands);
QByteArray fishCompletion(const std::vector<CommandSpec>& commands);
