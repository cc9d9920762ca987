#include "nearest.h"

#include "edit_distance.h"

#include <algorithm>

QByteArray nearest(const QByteArray& word, const QList<QByteArray>& candidates) {
    QByteArray best;
    qsizetype least = std::max<qsizetype>(2, word.size() / 3) + 1;
    for (const QByteArray& candidate : candidates) {
        const qsizetype steps = editDistance(word, candidate);
        if (steps >= least)
            continue;
        least = steps;
        best = candidate;
    }
    return best;
}
