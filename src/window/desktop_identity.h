#pragma once

// Identifies the program to the desktop, so that its windows show its icon and are grouped under
// its menu entry. Call once, before the first window.
void setDesktopIdentity();
