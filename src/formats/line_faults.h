#pragma once

#include "prepare_report.h"
#include "table_rows.h"

#include <QByteArray>
#include <limits>
#include <optional>

inline constexpr size_t anyFieldCount = std::numeric_limits<size_t>::max();

// How many fields a line may have, empty ones after them apart: as many as the header where commas
// or semicolons part them, since one that stands in a field without quotes shifts all that follow.
size_t mostFields(const TableFormat& format);

// Tells why a line of a table is no row of it, whatever its fields hold.
class LineFaults {
public:
    // A row has `fieldsNeeded` fields or more. The format outlives this.
    LineFaults(const TableFormat& format, size_t fieldsNeeded);

    // The header as it stands in the file.
    void setHeader(std::string_view line) { m_header = QByteArray(line.data(), std::ssize(line)); }

    std::optional<DropReason> find(const TableRows& rows) const;

private:
    bool isHeader(const TableRows& rows) const;
    bool hasOddFields(const TableRows& rows) const;

    const TableFormat& m_format;
    const size_t m_fieldsNeeded;
    const size_t m_mostFields;
    const bool m_isRunSeparated; // every row has as many fields as the header
    QByteArray m_header;
};
