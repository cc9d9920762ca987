#pragma once

#include <QPoint>
#include <QString>

// Where data lies on the plot that is shown, in pixels of its label.
namespace places {

// A base pair in the chromosome view, a genome coordinate in the genome view; -log10 p.
QPoint of(int position, double value);

// Within the span of a chromosome in the genome view, at so many percent from its first point to
// its last. The label must be in the chromosome index.
int genomeCoordinate(const QString& label, double percent);

} // namespace places
