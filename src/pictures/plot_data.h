#pragma once

#include "chromosome.h"
#include "failure.h"
#include "lead_names.h"
#include "plot_request.h"
#include "point_labels.h"
#include "points.h"
#include "scan_table.h"

#include <QList>
#include <QString>
#include <functional>
#include <variant>

// What is to be drawn of a scan.
struct PlotData {
    bool isGenome = true;
    QList<Chromosome> chromosomes; // of a genome
    Points points;                 // genome coordinates, or base pairs of one chromosome
    QList<PointLabel> labels;
    QString what; // "whole genome", "chromosome 7"
};

// The points as the window shows them: a file of one chromosome shows that one. `name` is the
// file's, for messages; the rows' names are drawn beside them.
std::variant<PlotData, Failure> plotData(ScanTable table, const QList<NamedRow>& named,
                                         const QString& name, const PlotRequest& request);

// The same of a file that is read by the window's own rule.
std::variant<PlotData, Failure> plotDataAsIs(const QString& path, const QString& name,
                                             const PlotRequest& request);
