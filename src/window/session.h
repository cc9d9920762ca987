#pragma once

#include "chromosome.h"
#include "hfile.h"
#include "plot_geometry.h"
#include "points.h"

#include <QList>

// The session variables as the values that the other rooms take and return.

// filename, shortname and defaultname, in the local 8-bit encoding. A name that is too long is cut.
void setDataFile(const QString& path);
QString dataFilePath();
QString dataFileShortName();
void setProposedName(const QString& name);
QString proposedName();

PlotGeometry sessionGeometry();
void setSessionGeometry(const PlotGeometry& geometry);
void keepGenomeScale();
void restoreGenomeScale();

// The chromosome index: Tag, the indices, the values and the colours.
QList<Chromosome> sessionChromosomes();
void setSessionChromosomes(const QList<Chromosome>& chromosomes);

// The shown set and the working set. The two share a scan's points, but not a chromosome's, so that
// each can be filtered in place. What is taken leaves an empty set, and is then not shared.
Points shownSet();
Points takeShownSet();
Points takeWorkingSet();
void setShownSet(const Points& points);
void setWorkingSet(const Points& points);
void copyShownToWorkingSet();
void copyWorkingToShownSet();

// Releases both sets before others are read, to limit peak memory.
void forgetPoints();
