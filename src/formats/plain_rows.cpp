#include "plain_rows.h"

#include "number_fields.h"
#include "number_text.h"

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
}

bool PlainRows::isPlain(const TableRows& rows, std::string_view label, int& lastPosition,
                        Row& row) const {
    if (rows.fieldCount() < m_columnsNeeded || rows.field(m_chromosome) != label ||
        rows.text().front() == '#')
        return false;
    row = {rows.field(m_position), rows.field(m_p), rows.field(m_name), 0.0};
    const std::optional<int> position = plainInteger(row.position);
    if (!position || *position < lastPosition || *position == INT_MAX || row.position[0] == '0' ||
        !readReal(row.p, row.value) || !(row.value >= DBL_MIN && row.value <= 1.0))
        return false;
    lastPosition = *position;
    return true;
}

void PlainRows::write(Batch& batch, size_t size, std::string_view label, TextBuffer& text,
                      PConverter& converter) const {
    constexpr size_t separators = 5;
    std::for_each_n(batch.begin(), size, [](Row& row) { row.value = 0.0 - std::log10(row.value); });
    for (size_t i = 0; i < size; ++i) {
        const Row& row = batch[i];
        char* at = text.room(label.size() + row.position.size() + row.p.size() + numberTextRoom +
                             row.name.size() + separators + TextBuffer::chunk);
        at = copied(row.position, copied('\t', copied(label, at)));
        char* const p = copied('\t', at);
        at = writeNumber(row.value, copied('\t', copied(row.p, p)));
        converter.notePlain(row.value, {p, static_cast<size_t>(at - p)});
        if (m_hasName)
            at = copied(row.name, copied('\t', at));
        text.setEnd(copied('\n', at));
    }
}

qint64 PlainRows::take(TableRows& rows, RowSink& sink, PConverter& converter, bool& isLeft) const {
    isLeft = true;
    if (!m_isPossible || !rows.isPlainPiece() || !sink.isInRun() ||
        rows.fieldCount() < m_columnsNeeded || rows.field(m_chromosome) != sink.runLabel())
        return 0;
    const std::string_view label = rows.field(m_chromosome); // padded, unlike the sink's
    int lastPosition = sink.lastPosition();
    qint64 taken = 0;
    Batch batch;
    isLeft = false;
    for (bool isMore = true; isMore && !isLeft;) {
        size_t size = 0;
        while (isMore && !isLeft && size < batchSize) {
            isLeft = !isPlain(rows, label, lastPosition, batch[size]);
            size += isLeft ? 0 : 1;
            isMore = isLeft || rows.nextInPiece();
        }
        write(batch, size, label, sink.text(), converter);
        taken += static_cast<qint64>(size);
    }
    sink.extendRun(taken, lastPosition);
    converter.countPlain(taken);
    return taken;
}
