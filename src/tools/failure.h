#pragma once

#include "exit_status.h"

#include <QString>

// Why a command ends, in words for its user, and with which status.
struct Failure {
    ExitStatus status = StatusFine;
    QString message; // empty where nobody is there to read it
};

inline Failure wrongCall(const QString& message) {
    return {StatusWrongCall, message};
}
