#pragma once

#include "plot_texts.h"

#include <QString>

// The reference for the texts on the plots and for the highlight fields.
namespace plain {

QString groupedInThrees(int number);
PositionRange highlightRange(const QString& first, const QString& second);

} // namespace plain
