#pragma once

#include "prepare_options.h"
#include "refusal.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <optional>

// The command `prepare` on whole tables in memory, one obvious step after the other. A table of
// positions is plain text without quotes.
namespace plain {

struct Prepared {
    QByteArray table;
    QMap<QString, qint64> dropped;      // rows by the name of the reason
    std::optional<RefusalCode> refused; // then the rest means nothing
};

// The inputs are unpacked.
Prepared prepare(const QList<QByteArray>& inputs, const PrepareOptions& options);

} // namespace plain
