#include "association_file.h"

#include "excerpt.h"
#include "number_fields.h"

#include <QIODevice>
#include <algorithm>
#include <array>
#include <utility>

AssociationFile::AssociationFile(QIODevice& device, const ReadOptions& options)
    : m_device(device), m_rule(options.layout), m_blocks(device, options.blockSize) {}

bool AssociationFile::open() {
    const bool isOpen = m_device.open(QIODevice::ReadOnly);
    if (isOpen)
        m_blocks.next();
    if (!isOpen || m_blocks.failed()) {
        report(FaultCode::CannotOpenFile);
        return false;
    }
    // A file without a byte has no layout; that it has no points is reported later.
    if (m_blocks.isEmpty())
        return true;
    const Result<Layout> layout = m_rule(m_blocks.piece());
    if (const Fault* fault = std::get_if<Fault>(&layout)) {
        m_fault = *fault;
        return false;
    }
    m_layout = std::get<Layout>(layout);
    m_columnsNeeded = m_layout.columnsNeeded();
    m_lines.find(m_blocks.piece(), m_layout.delimiter);
    for (qint64 i = 0; i < m_layout.headerLines; ++i)
        nextLine();
    return true;
}

bool AssociationFile::readMarker(const Record& record, Marker& marker) {
    if (record.pValue == "NA")
        return false;
    if (!readReal(record.pValue, marker.pValue)) {
        report(FaultCode::NonNumericPValue, m_layout.pValue.name, record.pValue);
        return false;
    }
    if (marker.pValue == 0.0)
        return false;
    if (readInteger(record.position, marker.position))
        return true;
    report(FaultCode::NonIntegerPosition, m_layout.position.name, record.position);
    return false;
}

Fault AssociationFile::takeFault() {
    return *std::exchange(m_fault, std::nullopt);
}

bool AssociationFile::nextPiece() {
    m_linesBefore += static_cast<qint64>(m_lines.lineCount());
    if (m_blocks.next()) {
        m_lines.find(m_blocks.piece(), m_layout.delimiter);
        return true;
    }
    m_lines.find({}, m_layout.delimiter);
    if (m_blocks.failed())
        report(FaultCode::CannotOpenFile);
    return false;
}

void AssociationFile::report(FaultCode code, const QString& column, std::string_view text) {
    m_fault = {code, line(), column, excerpt(text)};
}

// The leftmost column that is read and that the line does not reach is at fault.
void AssociationFile::reportShortLine() {
    std::array columns{&m_layout.chromosome, &m_layout.position, &m_layout.pValue};
    std::sort(columns.begin(), columns.end(),
              [](const Column* a, const Column* b) { return a->index < b->index; });
    const Column& missing =
        **std::find_if(columns.begin(), columns.end() - 1,
                       [&](const Column* column) { return column->index >= m_lines.fieldCount(); });
    report(FaultCode::IncorrectColumns, missing.name, m_lines.text());
}
