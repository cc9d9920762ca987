#pragma once

#include "p_converter.h"
#include "prepare_options.h"
#include "row_sink.h"
#include "table_rows.h"

#include <array>

// Takes the rows that nearly every table consists of, many at a time: on the chromosome of the row
// before, in order, with a position and a p that are written as they stand. In batches, so that the
// logarithms of successive rows overlap.
class PlainRows {
public:
    // `isParted`: rows are filtered, or watched for several tests or traits; none is plain then.
    PlainRows(const Understanding& table, const PrepareOptions& options, bool isParted);

    // Takes rows from the current one on, within the piece of text; returns how many. `isLeft` says
    // that the current row is then one that is not plain, and not taken. Where the sink could not
    // write, it has an error.
    qint64 take(TableRows& rows, RowSink& sink, PConverter& converter, bool& isLeft) const;

private:
    struct Row {
        std::string_view position, p, name;
        double value; // p, then -log10 p
    };
    static constexpr size_t batchSize = 128;
    using Batch = std::array<Row, batchSize>;

    bool isPlain(const TableRows& rows, std::string_view label, int& lastPosition, Row& row) const;
    void write(Batch& batch, size_t size, std::string_view label, TextBuffer& text,
               PConverter& converter) const;

    bool m_isPossible;
    size_t m_chromosome, m_position, m_p, m_name; // columns
    bool m_hasName;
    size_t m_columnsNeeded;
};
