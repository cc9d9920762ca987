#pragma once

#include "refusal.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <optional>
#include <string_view>

class QIODevice;
struct TableFormat;

// Where markers lie by their names: from a .bim or .map file, which has no titles, or from any
// table with titles for chromosome, position and name, such as .pvar and VCF. Packed or plain. The
// first row of a name counts.
class PositionTable {
public:
    struct Place {
        std::string_view chromosome; // valid as long as the table
        int position = 0;
    };

    // Refuses a file that cannot be read, or that does not say all three.
    std::optional<Refusal> read(const QString& path);

    std::optional<Place> find(std::string_view name) const;

private:
    struct Columns {
        int chromosome, position, name;
    };
    struct Entry {
        quint32 chromosome;
        int position;
    };
    bool readRows(QIODevice& text, const TableFormat& format, const Columns& columns);
    quint32 numberOf(std::string_view chromosome);

    QHash<QByteArray, Entry> m_places;
    QList<QByteArray> m_chromosomes;
    QHash<QByteArray, quint32> m_numbers;
};
