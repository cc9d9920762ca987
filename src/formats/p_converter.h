#pragma once

#include "prepare_report.h"
#include "table_rows.h"
#include "text_buffer.h"
#include "value_judge.h"

#include <QByteArray>
#include <optional>
#include <utility>

// Makes the two texts of a row's p-value from the columns that were chosen, and counts what the
// values look like.
class PConverter {
public:
    PConverter(Understanding table, ZeroP zeroP) : m_table(std::move(table)), m_zeroP(zeroP) {}

    // Appends p and -log10 p, a tab between them. A p of 0 that is to be written as the smallest p
    // of the table becomes zeroPlaceholder. A reason instead where the row has no p-value.
    std::optional<DropReason> append(const TableRows& rows, TextBuffer& text);

    // Counts rows with a p that is written as it stands, and notes one of them by its texts.
    void countPlain(qint64 rows) {
        m_counts.pNumbers += rows;
        m_counts.pPositive += rows;
        m_counts.positions += rows;
        m_counts.chromosomeRows += rows;
    }
    void notePlain(double negLog10, std::string_view text) {
        if (negLog10 > m_smallest)
            setSmallest(negLog10, text);
    }

    // Stands for p and -log10 p of a p-value that is 0; no other row has these texts.
    static constexpr const char* zeroPlaceholder = "0\t0";

    // What was met. `strongestLine` has the line only.
    const PrepareReport& met() const { return m_met; }
    const ValueCounts& counts() const { return m_counts; }
    ValueCounts& counts() { return m_counts; }
    double smallestNegLog10() const { return m_smallest; } // of the smallest p above 0; 0 for none
    const QByteArray& smallestText() const { return m_smallestText; } // p and -log10 p

private:
    std::optional<DropReason> appendP(std::string_view p, const TableRows& rows, TextBuffer& text);
    std::optional<DropReason> appendOddP(std::string_view p, const TableRows& rows,
                                         TextBuffer& text);
    std::optional<DropReason> appendTiny(double negLog10, const TableRows& rows, TextBuffer& text);
    std::optional<DropReason> appendZero(const TableRows& rows, TextBuffer& text);
    std::optional<DropReason> appendLog(std::string_view log, const TableRows& rows,
                                        TextBuffer& text);
    std::optional<DropReason> appendFromEffect(const TableRows& rows, TextBuffer& text);
    std::optional<DropReason> appendPrepared(const TableRows& rows, TextBuffer& text);
    void appendOwnText(std::string_view number, TextBuffer& text) const;
    void noteSmallest(double negLog10, const TextBuffer& text, size_t start) {
        if (negLog10 > m_smallest)
            setSmallest(negLog10, text.view().substr(start));
    }
    void setSmallest(double negLog10, std::string_view text);
    void noteBelowSmallest(double negLog10, std::string_view text, qint64 line);
    void comparePair(double p, double negLog10OfP, std::string_view text, const TableRows& rows);
    std::string_view logText(const TableRows& rows) const; // of the paired logarithm
    bool pairedLog(const TableRows& rows, std::string_view& text, double& negLog10) const;

    const Understanding m_table;
    const ZeroP m_zeroP;
    PrepareReport m_met;
    ValueCounts m_counts;
    double m_smallest = 0.0;
    QByteArray m_smallestText;
};
