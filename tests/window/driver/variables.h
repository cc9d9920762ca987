#pragma once

#include <QString>

namespace variables {

// Sets a session variable that holds an int, to reach a state that no handling of the window leads
// to. False for a name that none has.
bool set(const QString& name, int value);

} // namespace variables
