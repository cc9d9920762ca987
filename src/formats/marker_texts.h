#pragma once

#include "scan_table.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QList>
#include <QString>
#include <variant>
#include <vector>

// What a result file says of one marker. No text has a tab.
struct MarkerTexts {
    QByteArray p, negLog10; // as prepare() writes them
    QByteArray name;        // empty where the file has none
    QByteArrayList columns; // index-aligned with those asked for; empty beyond the end of a line
};

// Reads the texts of some rows of a table from its file, by row. Columns count from 0.
std::variant<QHash<size_t, MarkerTexts>, Refusal> readMarkerTexts(const QString& path,
                                                                  const ScanTable& table,
                                                                  std::vector<size_t> rows,
                                                                  const QList<int>& columns);
