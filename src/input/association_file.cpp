#include "input/association_file.h"

#include "input/number_fields.h"
#include "input/utf8.h"

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

std::vector<std::string_view> split(std::string_view text, char delimiter) {
    std::vector<std::string_view> fields;
    fields.reserve(static_cast<size_t>(std::count(text.begin(), text.end(), delimiter)) + 1);
    size_t start = 0, end = 0;
    while ((end = text.find(delimiter, start)) != std::string_view::npos) {
        fields.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    fields.push_back(text.substr(start));
    return fields;
}

bool isNumeric(std::string_view field) {
    return toInteger(field) || toReal(field);
}

using Titles = std::vector<std::string_view>;

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
size_t columnWhere(bool (*passes)(std::string_view), const Titles& titles) {
    return static_cast<size_t>(std::find_if(titles.begin(), titles.end(), passes) - titles.begin());
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
    const std::string_view firstLine = piece.substr(0, piece.find('\n'));
    const std::optional<char> delimiter = delimiterOf(firstLine);
    if (!delimiter)
        return Fault::UnknownDelimiter;
    m_delimiter = *delimiter;
    const std::vector<std::string_view> fields = split(firstLine, m_delimiter);
    if (fields.size() < 3)
        return Fault::TooFewColumns;
    m_lines.find(piece, m_delimiter);
    if (std::all_of(fields.begin(), fields.end(), isNumeric))
        return std::nullopt;
    m_lines.nextLine();
    return findColumns(fields);
}

std::optional<Fault> AssociationFile::findColumns(const Titles& titles) {
    m_positionColumn = columnWhere(namesPosition, titles);
    m_pValueColumn = columnWhere(namesPValue, titles);
    m_chromosomeColumn = columnWhere(namesChromosome, titles);
    m_columnsNeeded = std::max({m_chromosomeColumn, m_positionColumn, m_pValueColumn}) + 1;
    if (m_columnsNeeded > titles.size())
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
