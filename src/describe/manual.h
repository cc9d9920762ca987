#pragma once

#include "command.h"

#include <QByteArray>

// The manual page: `page`, in roff, with the explanation of each command and of all its options in
// place of the line `.\" The commands`. Null if there is no such line.
QByteArray manualPage(QByteArray page, const std::vector<CommandSpec>& commands);
