#pragma once

#include "plot_request.h"
#include "scan_table.h"

#include <QList>
#include <QString>
#include <variant>

struct NamedRow {
    size_t row = 0;
    QString name;
};

// The strongest lead markers of what is drawn, from the strongest down, as many as the request
// wants. A marker without a name gets chromosome and position, such as 2:27508073.
std::variant<QList<NamedRow>, Refusal> leadNames(const QString& path, const ScanTable& table,
                                                 const PlotRequest& request);
