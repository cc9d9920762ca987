#pragma once

#include "position_table.h"
#include "prepare_report.h"
#include "table_rows.h"
#include "value_judge.h"

#include <optional>
#include <string_view>

// Reads where the markers of a table lie: from columns of their own, from a joined name, or by name
// from another table. Counts what the positions look like.
class PlaceReader {
public:
    PlaceReader(const Understanding& table, const PositionTable& positions, bool isZeroBased,
                ValueCounts& counts)
        : m_table(table), m_positions(positions), m_isZeroBased(isZeroBased), m_counts(counts) {}

    // Positions count from 1. A reason instead where the row has no place.
    std::optional<DropReason> read(const TableRows& rows, std::string_view& chromosome,
                                   int& position);

private:
    std::optional<DropReason> findPlace(const TableRows& rows, std::string_view& chromosome,
                                        int& position);
    bool readPlain(std::string_view text, int& position);
    std::optional<DropReason> readPosition(std::string_view text, int& position);

    const Understanding& m_table;
    const PositionTable& m_positions;
    const bool m_isZeroBased;
    ValueCounts& m_counts;
    QByteArray m_knownLabel; // a chromosome that is not missing
};
