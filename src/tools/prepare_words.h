#pragma once

#include "prepare_report.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

// What `prepare` says of what it did.
struct PreparedTable {
    QStringList inputs; // as their user calls them
    QString output;
    PrepareReport report;
    QString outcome = {}; // what became of the rows, where they were not written to the output
};

// What the report says of the columns taken, and of the rows: what was changed, and why some were
// dropped.
QString columnsText(const PreparedTable& table);
QString rowsText(const PreparedTable& table);

// The report as text in UTF-8.
QByteArray textOf(const PreparedTable& table);

// The report for programs; docs/tools.md describes it.
QJsonObject jsonOf(const PreparedTable& table);
