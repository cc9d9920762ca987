#pragma once

#include <QList>

// Markers as the plots show them: entry i of both lists is one point. Lists are shared on copy, so
// handing points on costs nothing until one of their holders changes them.
struct Points {
    QList<int> positions; // base pairs, or genome coordinates (100 base pairs) in the genome view
    QList<double> values; // -log10 p

    bool operator==(const Points&) const = default;
};
