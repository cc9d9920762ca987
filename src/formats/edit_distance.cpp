#include "edit_distance.h"

#include <QList>
#include <algorithm>
#include <numeric>

qsizetype editDistance(const QByteArray& a, const QByteArray& b) {
    QList<qsizetype> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (const char letter : a) {
        qsizetype diagonal = row[0]++;
        for (qsizetype j = 0; j < b.size(); ++j) {
            const qsizetype replaced = diagonal + (letter == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.last();
}
