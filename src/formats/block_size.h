#pragma once

#include <QtGlobal>

// The bytes of a table that are read at a time.
constexpr qsizetype tableBlockSize = 256 * 1024;
