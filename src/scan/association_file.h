#pragma once

#include "fault.h"
#include "layout.h"
#include "line_fields.h"
#include "text_blocks.h"

#include <functional>
#include <optional>
#include <string_view>

class QIODevice;

// The texts of one data line's three columns, in UTF-8; valid until the next line is read.
struct Record {
    std::string_view chromosome;
    std::string_view position;
    std::string_view pValue;
};

// What a line whose p-value counts says of its marker.
struct Marker {
    int position = 0; // base pairs, as in the file
    double pValue = 0.0;
};

// How an association file is read.
struct ReadOptions {
    LayoutRule layout = windowLayout;
    qsizetype blockSize = TextBlocks::defaultBlockSize; // bytes
    std::function<void()> atData = [] {}; // called once, before the first data line is read
};

// A delimited text file of association results, read once from its start.
//
// Fields are neither trimmed nor unquoted, and empty lines do not count. Text is in the system's
// encoding unless a byte-order mark says otherwise. A read error partway is a fault, so that no
// file passes for a shorter one.
class AssociationFile {
public:
    // The device must be closed, and must outlive this.
    AssociationFile(QIODevice& device, const ReadOptions& options);

    // Opens the file and finds its layout. False at a fault. Called once, before all else.
    bool open();

    // Reads the next line that is not empty. False at the end, and after a fault.
    bool next(Record& record) {
        while (!m_fault && nextLine()) {
            if (m_lines.isEmptyLine())
                continue;
            if (m_lines.fieldCount() < m_columnsNeeded) {
                reportShortLine();
                return false;
            }
            record = {m_lines.field(m_layout.chromosome.index),
                      m_lines.field(m_layout.position.index), m_lines.field(m_layout.pValue.index)};
            return true;
        }
        return false;
    }

    // Reads the marker of the line that next() read. False where the line is skipped, since its
    // p-value is "NA" or exactly 0, and at a fault. The p-value is read before the position. Qt's
    // own conversion decides what a number is.
    bool readMarker(const Record& record, Marker& marker);

    const std::optional<Fault>& fault() const { return m_fault; }

    // Takes the fault back, so that next() goes on with the line after it. Only for a fault in a
    // data line.
    Fault takeFault();

    // Valid once open() returned true.
    const Layout& layout() const { return m_layout; }

    // The number of the current line from 1, header included.
    qint64 line() const { return m_linesBefore + static_cast<qint64>(m_lines.lineInPiece()); }

private:
    bool nextPiece();
    bool nextLine() {
        while (!m_lines.nextLine())
            if (!nextPiece())
                return false;
        return true;
    }
    void report(FaultCode code, const QString& column = {}, std::string_view text = {});
    void reportShortLine();

    QIODevice& m_device;
    LayoutRule m_rule;
    TextBlocks m_blocks;
    LineFields m_lines;
    qint64 m_linesBefore = 0; // in the pieces before this one
    Layout m_layout;
    size_t m_columnsNeeded = 0;
    std::optional<Fault> m_fault;
};
