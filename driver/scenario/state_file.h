#pragma once

#include <QString>

// Where the states go, one JSON object a line, each on disk before anything else happens: the next
// command may end the process.
void setStateFile(const QString& fileName);
void writeState(const QString& label);
