#pragma once

#include "p_converter.h"
#include "prepare_options.h"
#include "row_sink.h"
#include "table_rows.h"

#include <array>

// Takes the rows that nearly every table consists of, many at a time: with a position and a p that
// are written as they stand and, as long as the table is in order, on the chromosome of the row
// before. In batches, so that the logarithms of successive rows overlap.
class PlainRows {
public:
    // `isParted`: rows are filtered, or watched for several tests or traits; none is plain then.
    PlainRows(const Understanding& table, const PrepareOptions& options, bool isParted);

    struct Taken {
        qint64 rows = 0;
        qint64 otherSpellings = 0; // of them, those whose chromosome was spelled otherwise before
        bool isLeft = true;        // the current row is then one that is not plain, and not taken
    };

    // Takes rows from the current one on, within the piece of text. Where the sink could not write,
    // it has an error.
    Taken take(TableRows& rows, RowSink& sink, PConverter& converter);

private:
    struct Row {
        std::string_view label, positionText, p, name;
        int position;
        double value; // p, then -log10 p
    };

    bool fillBatch(TableRows& rows, std::string_view label, int& lastPosition, bool& isLeft);
    bool isPlain(const TableRows& rows, std::string_view label, int lastPosition, Row& row) const;
    void appendTexts(const Row& row, TextBuffer& text, PConverter& converter) const;
    void writeRun(RowSink& sink, PConverter& converter);
    qint64 addUnordered(RowSink& sink, PConverter& converter);

    bool m_isPossible;
    size_t m_chromosome, m_position, m_p, m_name; // columns
    bool m_hasName;
    size_t m_columnsNeeded;
    size_t m_mostFields; // where a row has more, they may be shifted
    std::array<Row, 128> m_batch;
    size_t m_size = 0; // of the batch
    TextBuffer m_text;
};
