#pragma once

#include <initializer_list>
#include <utility>

class QWidget;

// Gives each widget its object name, and the texts that explain it to those who ask: the tool tip,
// the what's-this text, and the name by which a screen reader calls it where it has no text of its
// own. Nothing of this is seen at rest. There is a text for every name given.
void describe(std::initializer_list<std::pair<QWidget*, const char*>> namedWidgets);
