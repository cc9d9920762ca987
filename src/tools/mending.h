#pragma once

#include "diagnosis.h"

#include <QString>
#include <QStringList>

// What to do about a file, as lines for its user.
struct Mending {
    QString reason;       // why it takes a choice, or cannot be mended as it is; may be empty
    QStringList commands; // each one mends it, ready to copy into a shell; alternatives
    QStringList advice;   // what else to do
};

// `name` is the file as the user wrote it, "-" for standard input.
Mending mending(const Diagnosis& diagnosis, const QString& name);
