#pragma once

#include "prepare_options.h"
#include "refusal.h"

#include <QStringList>
#include <variant>

namespace plain {

struct Columns {
    int chromosome = -1; // from 0; -1 for none
    int position = -1;
    int joined = -1;
    int p = -1;
    int log = -1; // paired with p, or alone
    PScale logScale = PScale::NegLog10;
    bool logSaysMinus = false;
    bool logScaleIsGiven = false;
    int name = -1;
    int test = -1;
    QList<int> traits;
    int end = -1;             // where the position is a start
    bool countsFrom0 = false; // by its title
    bool isPrepared = false;
};

// The columns by their titles and, where these leave it open, by the rows below.
std::variant<Columns, RefusalCode>
columnsOf(const QStringList& titles, const QList<QStringList>& rows, const PrepareOptions& options);

struct Place {
    QString chromosome;
    QString position;
};
std::optional<Place> joinedPlace(const QString& text);

} // namespace plain
