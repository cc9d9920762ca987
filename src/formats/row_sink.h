#pragma once

#include "ordered_rows.h"
#include "prepare_report.h"
#include "text_buffer.h"

#include <QByteArray>
#include <QFileDevice>
#include <QHash>
#include <QList>
#include <array>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

// One chromosome of a table.
struct TableChromosome {
    QByteArray label; // the first spelling
    qint64 markers = 0;
};

// Rows of one chromosome that were written one after the other.
struct WrittenRun {
    quint32 chromosome = 0; // by its number
    qint64 rows = 0;
};

// Takes the kept rows of a table in any order and writes them in order. As long as they come in
// order they go straight to the output, in constant memory; after that through OrderedRows.
class RowSink {
public:
    // The output is open for reading and writing, empty, and random-access.
    RowSink(QFileDevice& output, const QByteArray& header, qint64 memory);

    // The number of a chromosome by one of its spellings. `isOtherSpelling` says that another was
    // seen first.
    quint32 chromosome(std::string_view label, bool& isOtherSpelling);

    // A row's text starts after the position; TextBuffer::chunk bytes after it are readable. False
    // when something could not be written.
    bool add(quint32 chromosome, int position, std::string_view text);

    // Rows of the last row's chromosome may be appended to text(), as whole lines with runLabel(),
    // as long as they are in order. extendRun() counts them; false when they could not be written.
    bool isInRun() const { return !m_rows && !m_runs.empty(); }
    bool isSorting() const { return m_rows != nullptr; }
    std::string_view runLabel() const; // not empty
    int lastPosition() const { return m_lastPosition; }
    TextBuffer& text() { return m_block; }
    bool extendRun(qint64 rows, int lastPosition);

    const std::vector<TableChromosome>& chromosomes() const { return m_chromosomes; }
    bool isInOrder() const { return !m_rows; }

    // The place of each chromosome in the order of these names; equal names share one.
    static QList<quint32> ranks(const QList<QByteArray>& names);

    // How the rows are finished: the names of the chromosomes and what stands for a placeholder.
    struct Finish {
        QList<QByteArray> names; // by the chromosome's number
        QList<quint32> ranks;    // the place of each in the order
        QByteArray zeroText;     // in place of PConverter::zeroPlaceholder; empty to leave it
        bool isNeeded = false;   // else the rows are right as they were taken
    };

    // Ends adding. False when something could not be written or read again.
    bool finish(const Finish& finish);

    QString error() const { return m_error; }

private:
    // What chromosome() says of a label.
    struct Answer {
        QByteArray label; // null where this says nothing
        quint32 chromosome = 0;
        bool isOtherSpelling = false;
    };

    Answer answerTo(const QByteArray& label);
    bool startRun(quint32 chromosome, int position);
    bool isAfterLast(quint32 chromosome, int position) const;
    void startLine(std::string_view name, int position);
    bool endLine();
    bool flush();
    bool fail(QFileDevice& file);
    bool rewrite(const Finish& finish);
    bool moveWritten(QFileDevice& to);
    bool sortAll(QIODevice& written, const QList<quint32>& ranks);
    bool merge(QIODevice& written, const Finish& finish);
    bool appendFinished(const OrderedRow& row, const Finish& finish);

    QFileDevice& m_output;
    const QByteArray m_header;
    const qint64 m_memory;
    TextBuffer m_block;
    // The number of each spelling. Asked for in each row at worst, where arithmetic is several
    // times slower for a while after Qt's hash function.
    std::unordered_map<std::string, quint32> m_byLabel;
    QHash<QByteArray, quint32> m_byKey;
    std::vector<TableChromosome> m_chromosomes;
    std::array<Answer, 256> m_answers; // the last ones, each where slotOf() its label says
    std::vector<WrittenRun> m_runs;    // the output so far
    int m_lastPosition = 0;            // in it
    std::unique_ptr<OrderedRows> m_rows;
    QString m_error;
};
