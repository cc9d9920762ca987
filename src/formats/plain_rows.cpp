#include "plain_rows.h"

#include "line_faults.h"
#include "number_fields.h"
#include "number_text.h"
#include "p_value.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>

namespace {

// Copies a text that is followed by readable bytes, most often with a copy of fixed size.
char* copied(std::string_view text, char* at) {
    constexpr size_t usual = 16;
    static_assert(usual <= TextBlocks::padding);
    if (text.size() <= usual)
        std::memcpy(at, text.data(), usual);
    else
        std::memcpy(at, text.data(), text.size());
    return at + text.size();
}

char* copied(char character, char* at) {
    *at = character;
    return at + 1;
}

} // namespace

PlainRows::PlainRows(const Understanding& table, const PrepareOptions& options, bool isParted)
    : m_chromosome(static_cast<size_t>(table.columns.chromosome)),
      m_position(static_cast<size_t>(table.columns.position)),
      m_p(static_cast<size_t>(table.columns.p)),
      m_name(static_cast<size_t>(std::max(table.columns.name, 0))),
      m_hasName(table.columns.name >= 0) {
    const ColumnChoice& columns = table.columns;
    m_isPossible = !isParted && columns.chromosome >= 0 && columns.position >= 0 &&
                   columns.joined < 0 && columns.p >= 0 && columns.logP < 0 &&
                   !table.format.decimalComma && !options.zeroBased && !options.allColumns &&
                   !options.lineNumbers;
    m_columnsNeeded = 1 + std::max({m_chromosome, m_position, m_p, m_name});
    m_mostFields = mostFields(table.format);
}

// `label` is that of all rows; empty for any.
bool PlainRows::isPlain(const TableRows& rows, std::string_view label, int lastPosition,
                        Row& row) const {
    if (rows.fieldCount() < m_columnsNeeded || rows.fieldCount() > m_mostFields ||
        rows.text().front() == '#')
        return false;
    row = {rows.field(m_chromosome),
           rows.field(m_position),
           rows.field(m_p),
           rows.field(m_name),
           0,
           0.0};
    if (label.empty() ? isMissing(row.label) : row.label != label)
        return false;
    const std::optional<int> position = plainInteger(row.positionText);
    row.position = position.value_or(0);
    return row.position > 0 && row.position >= lastPosition && row.position < INT_MAX &&
           row.positionText[0] != '0' && readReal(row.p, row.value) && row.value >= DBL_MIN &&
           row.value <= 1.0;
}

// False where the piece ends.
bool PlainRows::fillBatch(TableRows& rows, std::string_view label, int& lastPosition,
                          bool& isLeft) {
    bool isMore = true;
    m_size = 0;
    isLeft = false;
    while (isMore && m_size < m_batch.size()) {
        Row& row = m_batch[m_size];
        isLeft = !isPlain(rows, label, lastPosition, row);
        if (isLeft)
            break;
        if (!label.empty())
            lastPosition = row.position;
        ++m_size;
        isMore = rows.nextInPiece();
    }
    std::for_each_n(m_batch.begin(), m_size,
                    [](Row& row) { row.value = 0.0 - std::log10(row.value); });
    return isMore && !isLeft;
}

// What follows the position.
void PlainRows::appendTexts(const Row& row, TextBuffer& text, PConverter& converter) const {
    constexpr size_t separators = 3;
    char* const p =
        text.room(row.p.size() + numberTextRoom + row.name.size() + separators + TextBuffer::chunk);
    char* at = writeNumber(row.value, copied('\t', copied(row.p, p)));
    converter.notePlain(row.value, {p, static_cast<size_t>(at - p)});
    text.setEnd(m_hasName ? copied(row.name, copied('\t', at)) : at);
}

void PlainRows::writeRun(RowSink& sink, PConverter& converter) {
    constexpr size_t separators = 2;
    TextBuffer& text = sink.text();
    for (size_t i = 0; i < m_size; ++i) {
        const Row& row = m_batch[i];
        char* const at =
            text.room(row.label.size() + row.positionText.size() + separators + TextBuffer::chunk);
        text.setEnd(copied('\t', copied(row.positionText, copied('\t', copied(row.label, at)))));
        appendTexts(row, text, converter);
        text.append('\n');
    }
    if (m_size > 0)
        sink.extendRun(static_cast<qint64>(m_size), m_batch[m_size - 1].position);
}

// Returns how many of the rows had their chromosome spelled otherwise before.
qint64 PlainRows::addUnordered(RowSink& sink, PConverter& converter) {
    qint64 otherSpellings = 0;
    for (size_t i = 0; i < m_size; ++i) {
        m_text.clear();
        appendTexts(m_batch[i], m_text, converter);
        bool isOther = false;
        const quint32 chromosome = sink.chromosome(m_batch[i].label, isOther);
        sink.add(chromosome, m_batch[i].position, m_text.view());
        otherSpellings += isOther ? 1 : 0;
    }
    return otherSpellings;
}

PlainRows::Taken PlainRows::take(TableRows& rows, RowSink& sink, PConverter& converter) {
    Taken taken;
    const bool isInRun = sink.isInRun();
    if (!m_isPossible || !rows.isPlainPiece() || (!isInRun && !sink.isSorting()))
        return taken;
    const std::string_view label = isInRun ? sink.runLabel() : std::string_view();
    int lastPosition = isInRun ? sink.lastPosition() : 0;
    for (bool isMore = true; isMore && sink.error().isEmpty();) {
        isMore = fillBatch(rows, label, lastPosition, taken.isLeft);
        if (isInRun)
            writeRun(sink, converter);
        else
            taken.otherSpellings += addUnordered(sink, converter);
        taken.rows += static_cast<qint64>(m_size);
        converter.countPlain(static_cast<qint64>(m_size));
    }
    return taken;
}
