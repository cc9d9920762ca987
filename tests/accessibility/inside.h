#pragma once

class QObject;

// A Qt Test that runs inside the real program: in a folder of its own, after the program's first
// dialog was answered with `fileName` and its window has come up. The program's exit status is then
// the test's. Each test defines these three.
extern const char* const fileName;
void beforeTheWindow(); // the application has been made, nothing was shown yet
QObject* newTest();
