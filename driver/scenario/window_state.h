#pragma once

#include <QJsonArray>
#include <QJsonObject>

// What a person sees of the window, and the private members.
QJsonObject windowState();

// The dialog that is open: its kind, texts and settings. Empty without one.
QJsonObject dialogState();

// The nesting of the layouts as one text, such as "mainLayout(topLayout(...),...)", and what in it
// is stretched or aligned.
QString layoutText();
QJsonArray layoutExceptions();

QJsonArray metaMethods();
