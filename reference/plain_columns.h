#pragma once

#include "plain_layout.h"
#include "prepare_options.h"
#include "refusal.h"

#include <QStringList>
#include <variant>

namespace plain {

struct Failure {
    RefusalCode code;
};

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
    int format = -1; // of a VCF: the logarithm is then the sample's LP
    int effect = -1; // z, or what the error divides
    int error = -1;
    int info = -1; // texts with LOG10P=number among them
    QList<std::pair<int, QString>> where;
    bool isPrepared = false;

    bool isTaken(int column) const {
        return QList<int>{chromosome, position, joined, p, log, name, test}.contains(column);
    }
};

// The columns by their titles and, where these leave it open, by the rows below. Those of a
// prepared table are known.
std::variant<Columns, RefusalCode> columnsOf(const Layout& layout, const QList<QStringList>& rows,
                                             const PrepareOptions& options, bool isPrepared);

} // namespace plain
