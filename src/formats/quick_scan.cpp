#include "quick_scan.h"

#include "chromosome_names.h"
#include "input_file.h"
#include "line_faults.h"
#include "number_fields.h"
#include "p_value.h"
#include "table_rows.h"
#include "titles.h"

#include <QSet>
#include <algorithm>
#include <cfloat>
#include <climits>

namespace {

constexpr size_t linesPerPlace = 64;
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
    QuickReader(const Understanding& table, PointCollector::Values values, ScanTable& scan)
        : m_format(table.format), m_chromosome(static_cast<size_t>(table.columns.chromosome)),
          m_position(static_cast<size_t>(table.columns.position)),
          m_p(static_cast<size_t>(table.columns.p)),
          m_columnsNeeded(1 + std::max({m_chromosome, m_position, m_p})),
          m_mostFields(mostFields(table.format)), m_scan(scan), m_points(values) {}

    // False where the table turns out to be of another kind. `start` is the byte of the file at
    // which the piece begins, where that is known.
    bool take(std::string_view piece, std::optional<qint64> start);
    void finish();

private:
    std::string_view withoutHeader(std::string_view piece) const;
    bool takeRow();
    bool startChromosome(std::string_view label);
    void dropMissing();
    qint64 line() const { return m_linesBefore + static_cast<qint64>(m_lines.lineInPiece()); }

    const TableFormat& m_format;
    const size_t m_chromosome, m_position, m_p; // columns
    const size_t m_columnsNeeded, m_mostFields;
    ScanTable& m_scan;
    LineFields m_lines;
    qint64 m_linesBefore = 0; // in the pieces before this one
    QByteArray m_label;
    QSet<QByteArray> m_keys;
    PointCollector m_points;
    int m_lastPosition = 0;
};

bool QuickReader::take(std::string_view piece, std::optional<qint64> start) {
    const char delimiter = delimiterOf(m_format.separator);
    const std::string_view rows = withoutHeader(piece);
    for (const char odd : {'"', ' ', '\t'})
        if (odd != delimiter && rows.find(odd) != std::string_view::npos)
            return false;
    m_lines.find(piece, delimiter);
    while (m_lines.nextLine()) {
        if (start && m_lines.lineInPiece() % linesPerPlace == 1)
            m_scan.places.append({*start + (m_lines.text().data() - piece.data()), line() - 1});
        if (line() >= m_format.firstDataLine && !takeRow())
            return false;
    }
    m_linesBefore += static_cast<qint64>(m_lines.lineCount());
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
    const std::optional<int> position = plainInteger(m_lines.field(m_position));
    if (!position || *position < 1 || *position == INT_MAX || *position < m_lastPosition)
        return false;
    m_lastPosition = *position;
    m_points.append(*position, p);
    m_scan.lines.append(line());
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
        m_scan.chromosomes.last().end = m_scan.size();
    m_scan.chromosomes.append({m_label, m_scan.size(), 0});
    return true;
}

void QuickReader::dropMissing() {
    Dropped& dropped = m_scan.report.dropped[static_cast<size_t>(DropReason::PMissing)];
    if (dropped.count++ < reportedLines)
        dropped.firstLines.append({0, line()});
}

void QuickReader::finish() {
    m_scan.points = m_points.take();
    m_scan.chromosomes.last().end = m_scan.size();
    m_scan.report.written = static_cast<qint64>(m_scan.size());
    for (const ScanTable::Chromosome& chromosome : std::as_const(m_scan.chromosomes))
        m_scan.report.chromosomes.append(
            {chromosome.name, static_cast<qint64>(chromosome.end - chromosome.begin)});
}

} // namespace

std::optional<ScanTable> quickScan(const QString& path, const Understanding& understanding,
                                   const PrepareOptions& options,
                                   const std::function<void(qint64)>& progress,
                                   PointCollector::Values values) {
    InputFile input(path);
    if (!arePlainOptions(options) || !areOwnColumns(understanding.columns) ||
        !isPlain(understanding.format) || input.open())
        return std::nullopt;
    ScanTable scan;
    scan.arePValues = values == PointCollector::Values::P;
    scan.report.table = understanding;
    QuickReader reader(scan.report.table, values, scan);
    TextBlocks blocks(input.text(), TextBlocks::defaultBlockSize, TextBlocks::Unmarked::AsTheyAre);
    while (blocks.next()) {
        if (!reader.take(blocks.piece(), blocks.pieceStart()))
            return std::nullopt;
        progress(input.bytesRead());
    }
    if (blocks.failed() || scan.size() == 0)
        return std::nullopt;
    reader.finish();
    return scan;
}
