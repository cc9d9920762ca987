#pragma once

#include <QJsonObject>

// Everything that the commands share: the session variables, exactly. Doubles stand as text with 17
// digits, so that infinities and what is not a number survive; long lists by length and SHA-1.
QJsonObject sessionState();
