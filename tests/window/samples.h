#pragma once

#include "expected_plot.h"

#include <QByteArray>
#include <QList>

// The data files that most scenarios open, with what the program must make of them.
namespace samples {

struct Marker {
    QByteArray chromosome;
    int position;
    QByteArray p;
};

QByteArray table(const QList<Marker>& markers); // with a header, separated by tabs
QList<int> positions(const QList<Marker>& markers);
QList<double> values(const QList<Marker>& markers); // -log10 p

// One chromosome whose view begins well above 0.
QList<Marker> chromosome();

// One pixel stands for one position here, from 971 at the image's left edge on; and values of 14
// and 36 lie exactly on pixel rows.
QList<Marker> ruler();

// Three chromosomes A, B and C whose coordinates on the genome axis are few and known.
QList<Marker> genome();
QList<int> genomeCoordinates();
GenomePlot genomeLook(const QString& fileName);

QByteArray chromosomeTable();
QByteArray rulerTable();
QByteArray genomeTable();
ExpectedView chromosomeView();
ExpectedView genomeView();

} // namespace samples
