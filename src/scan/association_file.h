#pragma once

#include "fault.h"
#include "line_fields.h"
#include "text_blocks.h"

#include <optional>
#include <string_view>

class QIODevice;

// The texts of one data line's three used columns, in UTF-8; valid until the next line is read.
struct Record {
    std::string_view chromosome;
    std::string_view position;
    std::string_view pValue;
};

// A delimited text file of association results, read once from its start.
//
// The first line decides all: a tab in it, else a blank, else a comma is the delimiter; a field in
// it that is no number makes it a header, in which the columns are found by their titles. Without a
// header the columns are chromosome, position, p-value. Fields are neither trimmed nor unquoted,
// and empty lines do not count. Text is in the system's encoding unless a byte-order mark says
// otherwise. A file that stops being readable half-way is at fault: it never passes for a shorter
// one.
class AssociationFile {
public:
    // The device is opened by open(), as a binary file, and has to outlive this.
    explicit AssociationFile(QIODevice& device, qsizetype blockSize = TextBlocks::defaultBlockSize);

    // Opens the file and reads as far as the first data line. Called once, before all else.
    std::optional<Fault> open();

    // Reads the next line that is not empty. False at the end and at a fault, which fault() tells.
    bool next(Record& record) {
        while (nextLine()) {
            if (m_lines.isEmptyLine())
                continue;
            if (m_lines.fieldCount() < m_columnsNeeded) {
                m_fault = Fault::IncorrectColumns;
                return false;
            }
            record = {m_lines.field(m_chromosomeColumn), m_lines.field(m_positionColumn),
                      m_lines.field(m_pValueColumn)};
            return true;
        }
        return false;
    }
    std::optional<Fault> fault() const { return m_fault; }

private:
    std::optional<Fault> readFirstLine();
    std::optional<Fault> findColumns();
    bool nextPiece();
    bool nextLine() {
        while (!m_lines.nextLine())
            if (!nextPiece())
                return false;
        return true;
    }

    QIODevice& m_device;
    TextBlocks m_blocks;
    LineFields m_lines;
    char m_delimiter = '\0';
    size_t m_chromosomeColumn = 0;
    size_t m_positionColumn = 1;
    size_t m_pValueColumn = 2;
    size_t m_columnsNeeded = 3;
    std::optional<Fault> m_fault;
};
