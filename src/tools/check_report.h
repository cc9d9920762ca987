#pragma once

#include "diagnosis.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

// What `check` says of one file.
struct CheckReport {
    QString name;    // for people
    QString word;    // as it stood on the command line
    QString packing; // "plain", "gzip" ...
    Diagnosis diagnosis;
};

// The report as text in UTF-8. `isBrief` leaves out all but verdict and findings.
QByteArray textOf(const CheckReport& report, bool isBrief);

// The report for programs; docs/tools.md describes it.
QJsonObject jsonOf(const CheckReport& report);
