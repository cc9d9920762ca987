#include "place_reader.h"

#include "joined_id.h"
#include "number_fields.h"
#include "p_value.h"
#include "position_text.h"
#include "titles.h"

#include <climits>

std::optional<DropReason> PlaceReader::read(const TableRows& rows, std::string_view& chromosome,
                                            int& position) {
    std::string_view positionText;
    if (m_table.columns.joined < 0 && m_table.columns.position < 0)
        return findPlace(rows, chromosome, position);
    if (m_table.columns.joined >= 0) {
        const auto joined = readJoinedId(rows.field(static_cast<size_t>(m_table.columns.joined)));
        if (!joined)
            return DropReason::JoinedIdUnreadable;
        chromosome = joined->chromosome;
        positionText = joined->position;
    } else {
        chromosome = m_table.columns.chromosome >= 0
                         ? rows.field(static_cast<size_t>(m_table.columns.chromosome))
                         : viewOf(m_table.columns.chromosomeValue);
        positionText = rows.field(static_cast<size_t>(m_table.columns.position));
    }
    const bool isKnown = !chromosome.empty() && chromosome == viewOf(m_knownLabel);
    const auto isNowhere = [](std::string_view text) { return text == "0" || text == "-9"; };
    // Some tools write both as 0 or -9 where the place is not known.
    if (!isKnown && isNowhere(chromosome) && isNowhere(positionText))
        return DropReason::ChromosomeMissing;
    if (!readPlain(positionText, position))
        if (const auto reason = readPosition(positionText, position))
            return reason;
    if (!isKnown) {
        if (isMissing(chromosome))
            return DropReason::ChromosomeMissing;
        if (!isNowhere(chromosome))
            m_knownLabel = bytesOf(chromosome);
    }
    ++m_counts.chromosomeRows;
    return std::nullopt;
}

// The usual text of a position.
bool PlaceReader::readPlain(std::string_view text, int& position) {
    const std::optional<int> plain = plainInteger(text);
    if (!plain || *plain < 1 || *plain == INT_MAX)
        return false;
    ++m_counts.positions;
    position = *plain + (m_isZeroBased ? 1 : 0);
    return true;
}

std::optional<DropReason> PlaceReader::findPlace(const TableRows& rows,
                                                 std::string_view& chromosome, int& position) {
    const auto place = m_positions.find(rows.field(static_cast<size_t>(m_table.columns.name)));
    if (!place)
        return DropReason::NoPositionInTable;
    chromosome = place->chromosome;
    position = place->position;
    ++m_counts.chromosomeRows;
    return position < 1 ? std::optional(DropReason::PositionNotPositive) : std::nullopt;
}

std::optional<DropReason> PlaceReader::readPosition(std::string_view text, int& position) {
    switch (::readPosition(text, m_table.format, position)) {
    case PositionKind::Missing:
        return DropReason::PositionMissing;
    case PositionKind::Fractional:
        ++m_counts.positions;
        ++m_counts.positionsFractional;
        return DropReason::PositionNotWhole;
    case PositionKind::NotANumber:
        ++m_counts.positions;
        ++m_counts.positionTexts;
        return DropReason::PositionNotWhole;
    case PositionKind::TooLarge:
        ++m_counts.positions;
        return DropReason::PositionTooLarge;
    case PositionKind::Whole:
        break;
    }
    ++m_counts.positions;
    if (m_isZeroBased) {
        if (position == INT_MAX)
            return DropReason::PositionTooLarge;
        ++position;
    }
    return position < 1 ? std::optional(DropReason::PositionNotPositive) : std::nullopt;
}
