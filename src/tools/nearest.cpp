#include "nearest.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

qsizetype distance(const QByteArray& a, const QByteArray& b) {
    QList<qsizetype> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype i = 0; i < a.size(); ++i) {
        qsizetype diagonal = std::exchange(row[0], i + 1);
        for (qsizetype j = 0; j < b.size(); ++j) {
            const qsizetype replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.last();
}

} // namespace

QByteArray nearest(const QByteArray& word, const QList<QByteArray>& candidates) {
    QByteArray best;
    qsizetype least = std::max<qsizetype>(2, word.size() / 3) + 1;
    for (const QByteArray& candidate : candidates) {
        const qsizetype steps = distance(word, candidate);
        if (steps >= least)
            continue;
        least = steps;
        best = candidate;
    }
    return best;
}
