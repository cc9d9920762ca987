#pragma once

#include <QJsonObject>
#include <QString>

// Every session variable by name, exactly. Doubles are texts with 17 digits, so that infinities and
// not-a-numbers survive; long lists are their length and SHA-1.
QJsonObject sessionState();

// Sets one that holds an int, to reach a state that no handling of the window leads to. Gives up on
// any other name.
void setSessionVariable(const QString& name, int value);
