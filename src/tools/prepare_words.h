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

// What the report says of the rows: what was changed, and why some were dropped.
QString rowsText(const PreparedTable& table);

// The report as text in UTF-8.
QByteArray textOf(const PreparedTable& table);

// The columns chosen, the other candidates and the remarks, of any report about a result file.
QString columnsText(const PrepareReport& report);

// The same for programs: `columns`, `not_chosen` and `remarks`.
QJsonObject columnsJson(const PrepareReport& report);

// The reasons for which rows were left out, with how often and where.
QString droppedText(const PrepareReport& report, const QStringList& inputs, const char* heading);
QJsonObject droppedJson(const PrepareReport& report, const QStringList& inputs);

// The report for programs; docs/tools.md describes it.
QJsonObject jsonOf(const PreparedTable& table);
