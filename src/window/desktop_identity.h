#pragma once

// Tells the desktop which of its applications this is, so that windows get the program's icon and
// stand under its menu entry. Called once, before the first window.
void setDesktopIdentity();
