#pragma once

#include <QString>

// Pictures of the dialog that is open, or else of the window, as the screen shows them.
namespace shot {

// It has the keyboard, which this asks for, and looks as it did when last asked.
bool isStill();

void save(const QString& fileName);

} // namespace shot
