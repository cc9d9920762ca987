#pragma once

#include "prepare_words.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>
#include <optional>

// What `plot` says of a picture that it drew.
struct DrawnPicture {
    QString input, output; // as their user calls them
    QString what;          // "whole genome", "chromosome 7"
    qint64 markers = 0;
    QStringList labels;                   // the names written into it
    std::optional<double> lambda;         // of a quantile-quantile plot
    std::optional<PreparedTable> reading; // nothing where the window's own rule read the file
};

// The report for programs; docs/tools.md describes it.
QJsonObject jsonOf(const DrawnPicture& picture);

// The whole document. `failed` are the files that were not drawn.
QJsonObject plotJson(const QJsonArray& pictures, const QStringList& failed);
