#include "quick_scan.h"

#include "block_size.h"
#include "chromosome_names.h"
#include "input_file.h"
#include "line_faults.h"
#include "number_fields.h"
#include "p_value.h"
#include "table_rows.h"
#include "titles.h"

#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>

namespace {

constexpr qsizetype mostLabels = 1000; // more of them may be names of markers

bool arePlainOptions(const PrepareOptions& options) {
    return options.where.isEmpty() && !options.testName && !options.chromosomeValue &&
           options.positionsFile.isEmpty() && !options.zeroBased && options.minMarkers <= 1 &&
           options.chromosomeNames == ChromosomeNames::Keep;
}

bool areOwnColumns(const ColumnChoice& columns) {
    const bool hasPlace = columns.chromosome >= 0 && columns.position >= 0 && columns.joined < 0;
    const bool hasOthers = columns.test >= 0 || !columns.traits.isEmpty() || columns.format >= 0;
    return hasPlace && !hasOthers && columns.p >= 0 && (columns.logP < 0 || columns.isPrepared);
}

bool isPlain(const TableFormat& format) {
    return format.separator < Separator::Spaces && !format.decimalComma;
}

// Takes the rows of a table as long as they are plain.
class QuickReader {
public:
    QuickReader(const Understanding& table, ScanTable& scan)
        : m_format(table.format), m_chromosome(static_cast<size_t>(table.columns.chromosome)),
          m_position(static_cast<size_t>(table.columns.position)),
          m_p(static_cast<size_t>(table.columns.p)),
          m_columnsNeeded(1 + std::max({m_chromosome, m_position, m_p})),
          m_mostFields(mostFields(table.format)), m_scan(scan) {}

    // False where the table turns out to be of another kind.
    bool take(std::string_view piece);
    void finish();

private:
    std::string_view withoutHeader(std::string_view piece) const;
    bool takeRow();
    bool startChromosome(std::string_view label);
    void dropMissing();
    void takeLogarithms();

    const TableFormat& m_format;
    const size_t m_chromosome, m_position, m_p; // columns
    const size_t m_columnsNeeded, m_mostFields;
    ScanTable& m_scan;
    LineFields m_lines;
    qint64 m_linesBefore = 0; // in the pieces before this one
    QByteArray m_label;
    QSet<QByteArray> m_keys;
    int m_lastPosition = 0;
    size_t m_logarithms = 0; // how many of the values are logarithms already
};

bool QuickReader::take(std::string_view piece) {
    const char delimiter = delimiterOf(m_format.separator);
    const std::string_view rows = withoutHeader(piece);
    for (const char odd : {'"', ' ', '\t'})
        if (odd != delimiter && rows.find(odd) != std::string_view::npos)
            return false;
    m_lines.find(piece, delimiter);
    while (m_lines.nextLine())
        if (m_linesBefore + static_cast<qint64>(m_lines.lineInPiece()) >= m_format.firstDataLine &&
            !takeRow())
            return false;
    m_linesBefore += static_cast<qint64>(m_lines.lineCount());
    takeLogarithms();
    return true;
}

std::string_view QuickReader::withoutHeader(std::string_view piece) const {
    for (qint64 line = m_linesBefore + 1; line < m_format.firstDataLine && !piece.empty(); ++line)
        piece.remove_prefix(std::min(piece.find('\n'), piece.size() - 1) + 1);
    return piece;
}

bool QuickReader::takeRow() {
    if (m_lines.fieldCount() < m_columnsNeeded || m_lines.fieldCount() > m_mostFields ||
        m_lines.text().front() == '#')
        return false;
    ++m_scan.report.rows;
    double p = 0.0;
    if (!readReal(m_lines.field(m_p), p) || !(p >= DBL_MIN && p <= 1.0)) {
        if (!isMissing(m_lines.field(m_p)))
            return false;
        dropMissing();
        return true;
    }
    const std::string_view label = m_lines.field(m_chromosome);
    const bool isSame = label == viewOf(m_label) && !m_scan.chromosomes.isEmpty();
    if (!isSame && !startChromosome(label))
        return false;
    int position = 0;
    if (!readInteger(m_lines.field(m_position), position) || position < 1 || position == INT_MAX ||
        position < m_lastPosition)
        return false;
    m_lastPosition = position;
    m_scan.positions.push_back(position);
    m_scan.values.push_back(p);
    m_scan.lines.push_back(m_linesBefore + static_cast<qint64>(m_lines.lineInPiece()));
    return true;
}

bool QuickReader::startChromosome(std::string_view label) {
    const QByteArray key = chromosomeKey(label);
    const bool isNext = m_scan.chromosomes.isEmpty() || isBefore(viewOf(m_label), label);
    if (!isNext || isMissing(label) || label == "0" || label == "-9" || m_keys.contains(key) ||
        m_keys.size() == mostLabels)
        return false;
    m_keys.insert(key);
    m_label = bytesOf(label);
    m_lastPosition = 0;
    if (!m_scan.chromosomes.isEmpty())
        m_scan.chromosomes.last().end = m_scan.positions.size();
    m_scan.chromosomes.append({m_label, m_scan.positions.size(), 0});
    return true;
}

void QuickReader::dropMissing() {
    Dropped& dropped = m_scan.report.dropped[static_cast<size_t>(DropReason::PMissing)];
    if (dropped.count++ < reportedLines)
        dropped.firstLines.append({0, m_linesBefore + static_cast<qint64>(m_lines.lineInPiece())});
}

// In batches, so that successive calls overlap.
void QuickReader::takeLogarithms() {
    for (; m_logarithms < m_scan.values.size(); ++m_logarithms)
        m_scan.values[m_logarithms] = -std::log10(m_scan.values[m_logarithms]);
}

void QuickReader::finish() {
    m_scan.chromosomes.last().end = m_scan.positions.size();
    m_scan.report.written = static_cast<qint64>(m_scan.positions.size());
    for (const ScanTable::Chromosome& chromosome : std::as_const(m_scan.chromosomes))
        m_scan.report.chromosomes.append(
            {chromosome.name, static_cast<qint64>(chromosome.end - chromosome.begin)});
}

// As many rows as the file has if its lines are as long as the first ones.
size_t expectedRows(std::string_view piece, const InputFile& input, const QString& path) {
    const auto lines = static_cast<double>(std::count(piece.begin(), piece.end(), '\n'));
    const double share = lines / static_cast<double>(std::max<qint64>(input.bytesRead(), 1));
    return static_cast<size_t>(share * static_cast<double>(QFileInfo(path).size()) * 1.05);
}

void reserve(size_t rows, ScanTable& scan) {
    scan.positions.reserve(rows);
    scan.values.reserve(rows);
    scan.lines.reserve(rows);
}

} // namespace

std::optional<ScanTable> quickScan(const QString& path, const Understanding& understanding,
                                   const PrepareOptions& options,
                                   const std::function<void(qint64)>& progress) {
    InputFile input(path);
    if (!arePlainOptions(options) || !areOwnColumns(understanding.columns) ||
        !isPlain(understanding.format) || input.open())
        return std::nullopt;
    ScanTable scan;
    scan.report.table = understanding;
    QuickReader reader(scan.report.table, scan);
    TextBlocks blocks(input.text(), blockSize, TextBlocks::Unmarked::AsTheyAre);
    bool isFirst = true;
    while (blocks.next()) {
        if (std::exchange(isFirst, false))
            reserve(expectedRows(blocks.piece(), input, path), scan);
        if (!reader.take(blocks.piece()))
            return std::nullopt;
        progress(input.bytesRead());
    }
    if (blocks.failed() || scan.positions.empty())
        return std::nullopt;
    reader.finish();
    return scan;
}
