#include "line_faults.h"

#include "body_agreement.h"
#include "titles.h"

size_t mostFields(const TableFormat& format) {
    const bool isShifted =
        format.separator == Separator::Comma || format.separator == Separator::Semicolon;
    return isShifted && !format.titles.isEmpty() && !endsInList(format.titles)
               ? static_cast<size_t>(format.titles.size())
               : anyFieldCount;
}

LineFaults::LineFaults(const TableFormat& format, size_t fieldsNeeded)
    : m_format(format), m_fieldsNeeded(fieldsNeeded), m_mostFields(mostFields(format)),
      m_isRunSeparated(format.separator >= Separator::Spaces && !format.titles.isEmpty() &&
                       !endsInList(format.titles)) {}

std::optional<DropReason> LineFaults::find(const TableRows& rows) const {
    const std::string_view line = rows.text();
    if (line.find_first_not_of(" \t") == std::string_view::npos)
        return DropReason::Empty;
    if (isHeader(rows))
        return DropReason::RepeatedHeader;
    if (m_format.hasComments && line.front() == '#')
        return DropReason::Comment;
    return rows.fieldCount() < m_fieldsNeeded || hasOddFields(rows)
               ? std::optional(DropReason::ShortLine)
               : std::nullopt;
}

// The header of another file of the same tool may be aligned otherwise.
bool LineFaults::isHeader(const TableRows& rows) const {
    if (rows.text() == viewOf(m_header))
        return true;
    const QList<QByteArray>& titles = m_format.titles;
    if (rows.fieldCount() != static_cast<size_t>(titles.size()))
        return false;
    for (qsizetype column = 0; column < titles.size(); ++column)
        if (rows.field(static_cast<size_t>(column)) != viewOf(titles[column]))
            return false;
    return !titles.isEmpty();
}

// Which field is which is then unknown: between runs of spaces neither an empty field nor a space
// within one can be seen.
bool LineFaults::hasOddFields(const TableRows& rows) const {
    if (m_isRunSeparated)
        return rows.fieldCount() != static_cast<size_t>(m_format.titles.size());
    for (size_t i = m_mostFields; i < rows.fieldCount(); ++i)
        if (!rows.field(i).empty())
            return true;
    return false;
}
