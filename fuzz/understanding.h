#pragma once

#include "prepare_options.h"

#include <QByteArray>

// Fails unless understand() and the plain version in reference/ refuse the table for one reason, or
// find the same header, separator and columns.
void checkUnderstanding(const QByteArray& table, const PrepareOptions& options);
