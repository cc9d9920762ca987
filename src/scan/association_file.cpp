#include "association_file.h"

#include "number_fields.h"
#include "utf8.h"

#include <QIODevice>
#include <QString>
#include <algorithm>

namespace {

std::optional<char> delimiterOf(std::string_view firstLine) {
    for (const char delimiter : {'\t', ' ', ','})
        if (firstLine.find(delimiter) != std::string_view::npos)
            return delimiter;
    return std::nullopt;
}

bool isNumeric(std::string_view field) {
    return toInteger(field) || toReal(field);
}

// The words are searched for loosely because every tool titles its columns in its own way.
bool mentions(std::string_view title, std::initializer_list<const char*> words) {
    const QString text = fromUtf8(title);
    return std::any_of(words.begin(), words.end(), [&](const char* word) {
        return text.contains(QLatin1String(word), Qt::CaseInsensitive);
    });
}

bool namesPosition(std::string_view title) {
    return mentions(title, {"pos"});
}

bool namesPValue(std::string_view title) {
    return title == "P" || title == "p" || mentions(title, {"pval", "p-val"});
}

bool namesChromosome(std::string_view title) {
    return mentions(title, {"chr", "some", "id"});
}

// The leftmost column whose title passes; the number of titles where none does.
size_t columnWhere(bool (*passes)(std::string_view), const LineFields& titles) {
    size_t column = 0;
    while (column < titles.fieldCount() && !passes(titles.field(column)))
        ++column;
    return column;
}

bool isHeader(const LineFields& line) {
    return columnWhere([](std::string_view field) { return !isNumeric(field); }, line) <
           line.fieldCount();
}

} // namespace

AssociationFile::AssociationFile(QIODevice& device, qsizetype blockSize)
    : m_device(device), m_blocks(device, blockSize) {}

std::optional<Fault> AssociationFile::open() {
    if (!m_device.open(QIODevice::ReadOnly))
        return Fault::CannotOpenFile;
    m_blocks.next();
    if (m_blocks.failed())
        return Fault::CannotOpenFile;
    // A file without a byte has no first line to be wrong; one without a point is told later.
    if (m_blocks.isEmpty())
        return std::nullopt;
    return readFirstLine();
}

std::optional<Fault> AssociationFile::readFirstLine() {
    const std::string_view piece = m_blocks.piece();
    const std::optional<char> delimiter = delimiterOf(piece.substr(0, piece.find('\n')));
    if (!delimiter)
        return Fault::UnknownDelimiter;
    m_delimiter = *delimiter;
    m_lines.find(piece, m_delimiter);
    m_lines.nextLine();
    if (m_lines.fieldCount() < 3)
        return Fault::TooFewColumns;
    if (isHeader(m_lines))
        return findColumns();
    m_lines.rewind();
    return std::nullopt;
}

std::optional<Fault> AssociationFile::findColumns() {
    m_positionColumn = columnWhere(namesPosition, m_lines);
    m_pValueColumn = columnWhere(namesPValue, m_lines);
    m_chromosomeColumn = columnWhere(namesChromosome, m_lines);
    m_columnsNeeded = std::max({m_chromosomeColumn, m_positionColumn, m_pValueColumn}) + 1;
    if (m_columnsNeeded > m_lines.fieldCount())
        return Fault::IncorrectColumns;
    return std::nullopt;
}

bool AssociationFile::nextPiece() {
    if (m_blocks.next()) {
        m_lines.find(m_blocks.piece(), m_delimiter);
        return true;
    }
    if (m_blocks.failed())
        m_fault = Fault::CannotOpenFile;
    return false;
}
