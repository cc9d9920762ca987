#pragma once

#include "prepare_options.h"
#include "refusal.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <optional>

// The command `prepare` on whole tables in memory, one obvious step after the other. It knows
// tables with a chromosome, a position and p or its logarithm; neither VCF by sample, nor effects
// that p is computed from, nor tables of positions.
namespace plain {

struct Prepared {
    QByteArray table;
    QMap<QString, qint64> dropped;      // rows by the name of the reason
    QMap<qint64, QString> reasonOfLine; // of the first input; its first line is 1
    std::optional<RefusalCode> refused; // then the rest means nothing
};

// The inputs are unpacked.
Prepared prepare(const QList<QByteArray>& inputs, const PrepareOptions& options);

} // namespace plain
