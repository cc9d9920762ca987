#include "places.h"

#include "give_up.h"
#include "session.h"

#include <cmath>

namespace places {

QPoint of(int position, double value) {
    const PlotGeometry shown = sessionGeometry();
    return {shown.xOf(position), shown.yOf(value)};
}

int genomeCoordinate(const QString& label, double percent) {
    const qsizetype i = Tag.indexOf(label);
    if (i < 0)
        giveUp(QStringLiteral("no chromosome \"%1\"").arg(label));
    return Start_value[i] +
           static_cast<int>(std::lround((End_value[i] - Start_value[i]) * percent / 100.0));
}

} // namespace places
