#pragma once

#include "plain_columns.h"

#include <optional>
#include <utility>

namespace plain {

// The columns that the user named, from 0; -1 for none.
struct NamedPlace {
    int chromosome;
    int position;
    int name;
};

// Chooses the columns of chromosome and position, or the one that holds both. Throws a Failure
// where there are none.
void choosePlace(const Layout& layout, const QList<QStringList>& rows,
                 const PrepareOptions& options, const NamedPlace& named, Columns& columns);

// Chromosome and position.
std::optional<std::pair<QString, QString>> joinedPlace(const QString& text);

} // namespace plain
