#pragma once

#include <QList>
#include <algorithm>
#include <iterator>

// Those of the candidates that pass, in their order.
template <typename Candidate>
QList<Candidate> where(const QList<Candidate>& candidates, const auto& passes) {
    QList<Candidate> found;
    std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(found), passes);
    return found;
}
