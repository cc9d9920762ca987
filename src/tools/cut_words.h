#pragma once

#include "prepare_report.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>

// One of the things that name the lines of a cut, and what it named.
struct CutPart {
    enum class Kind { Table, Region, Names };
    Kind kind = Kind::Table;
    QString name;            // as its user wrote it
    qint64 named = 0;        // rows of the table, names; markers of the region
    qint64 matched = 0;      // lines
    QByteArray chromosome;   // where they are; empty for names
    qint64 equal = 0;        // of these lines: others are like them, which the table does not name
    bool isByWindow = false; // only the window's own reading of the file has these rows
    QList<QByteArray> notFound; // names
};

// What `keep` or `drop` did.
struct CutReport {
    const char* command = nullptr;
    QString input; // as its user calls it
    QString output;
    PrepareReport scan; // of the input
    QList<CutPart> parts;
    qint64 lines = 0;      // after the header, without comments
    qint64 named = 0;      // of these, each once
    qint64 written = 0;    // of these
    qint64 notInViews = 0; // of these: not named, and no view could hold them
};

// The report as text in UTF-8.
QByteArray textOf(const CutReport& report);

// The report for programs; docs/tools.md describes it.
QJsonObject jsonOf(const CutReport& report);
