#pragma once

#include <functional>

// Waiting for the program by polling from its own event loop, also while a dialog is open.
namespace waiting {

bool isIdle();          // the window is on screen, no dialog is open, no command is running
bool isIdleAndActive(); // and the window has the keyboard, which this asks for

// Calls `act` once `isReady` has held for a few polls in a row: widgets that were just shown or
// hidden get their places first. Gives up after two minutes of polls.
void until(std::function<bool()> isReady, std::function<void()> act);

} // namespace waiting
