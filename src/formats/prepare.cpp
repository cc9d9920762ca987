#include "prepare.h"

#include "column_option.h"
#include "input_file.h"
#include "line_faults.h"
#include "output_columns.h"
#include "p_converter.h"
#include "place_reader.h"
#include "plain_rows.h"
#include "role_titles.h"
#include "row_sink.h"
#include "table_parts.h"
#include "table_rows.h"
#include "titles.h"
#include "written_chromosomes.h"

#include <QSet>
#include <algorithm>
#include <climits>

namespace {

using Failure = std::optional<Refusal>;

// What only the reading of all rows shows, so that they are then read again.
struct Discovery {
    QByteArray keptTest;            // the test whose rows alone are kept
    bool isPartedAnywhere = false;  // rows of one marker may lie anywhere
    QSet<quint32> smallChromosomes; // those with too few markers, by their number in the sink
};

// One reading of all inputs, from the first row to the finished output.
class Preparation {
public:
    Preparation(const PrepareJob& job, const QList<Understanding>& tables,
                const PositionTable& positions, QFileDevice& output, const Discovery& known);

    // Nothing where all went well; report() is then complete, unless something was discovered.
    Failure run();

    // What was not known before; run() stopped there.
    const std::optional<Discovery>& discovery() const { return m_discovery; }
    const PrepareReport& report() const { return m_report; }

private:
    Failure findColumns();
    Failure readInput(int index);
    Failure takePlainRows(TableRows& rows, bool& isLeft);
    Failure takeRow(const TableRows& rows, const LineFaults& faults);
    std::optional<DropReason> filterFault(const TableRows& rows) const;
    bool foundAdditiveTest() const { return m_parts.hasAdditiveTest(); }
    void appendName(const TableRows& rows);
    void appendField(const TableRows& rows, int column);
    void drop(DropReason reason, const TableRows& rows);
    Refusal unwritable() const { return {RefusalCode::Unwritable, m_sink.error(), {}, {}}; }
    Failure finish(const WrittenChromosomes& chromosomes);
    QString manyChromosomes() const;
    Refusal nothingWritten() const;
    void collect(const PConverter& converter);

    const PrepareJob& m_job;
    const QList<Understanding>& m_tables;
    const ColumnChoice& m_columns;
    const Discovery m_known;
    std::optional<Discovery> m_discovery;
    RowSink m_sink;
    PConverter m_converter;
    PlaceReader m_places;
    std::optional<PlainRows> m_plainRows;
    PrepareReport m_report;
    QList<std::pair<int, QByteArray>> m_where;
    QList<int> m_extraColumns;
    size_t m_columnsNeeded = 0;
    TableParts m_parts;
    TextBuffer m_text;
    int m_input = 0;
    qint64 m_droppedZeros = 0; // rows with a p of 0 that are dropped for something else
};

Preparation::Preparation(const PrepareJob& job, const QList<Understanding>& tables,
                         const PositionTable& positions, QFileDevice& output,
                         const Discovery& known)
    : m_job(job), m_tables(tables), m_columns(tables.first().columns), m_known(known),
      m_sink(output, outputHeader(tables.first(), job.options), job.options.memory),
      m_converter(tables.first(), job.options.zeroP),
      m_places(tables.first(), positions, job.options.zeroBased, m_converter.counts()),
      m_parts(m_columns.name, known.isPartedAnywhere) {
    m_report.table = tables.first();
    m_report.keptTest = known.keptTest;
}

// The options that may help where a reason drops all rows.
QList<QByteArray> optionsAgainst(DropReason reason, const ColumnChoice& columns) {
    switch (reason) {
    case DropReason::PMissing:
    case DropReason::PNotANumber:
        if (columns.z >= 0)
            return {"--z COLUMN"};
        if (columns.beta >= 0)
            return {"--beta COLUMN --se COLUMN"};
        return {"--p COLUMN"};
    case DropReason::PositionMissing:
    case DropReason::PositionNotPositive:
    case DropReason::ChromosomeMissing:
    case DropReason::JoinedIdUnreadable:
        return columns.name >= 0 ? QList<QByteArray>{"--positions FILE"}
                                 : QList<QByteArray>{"--chromosome COLUMN --position COLUMN"};
    default:
        return {};
    }
}

Failure Preparation::findColumns() {
    const TableFormat& format = m_tables.first().format;
    const int count = format.titles.isEmpty() ? INT_MAX : static_cast<int>(format.titles.size());
    for (const auto& [title, value] : m_job.options.where) {
        const auto column = whereColumn(title, format.titles, count);
        if (const auto* refusal = std::get_if<Refusal>(&column))
            return *refusal;
        m_where.append({std::get<int>(column), value});
    }
    m_extraColumns = otherColumns(m_tables.first(), m_job.options);
    m_columnsNeeded = m_columns.fieldsNeeded();
    for (const auto& [column, value] : std::as_const(m_where))
        m_columnsNeeded = std::max(m_columnsNeeded, static_cast<size_t>(column) + 1);
    const auto isFiltered = [&](int column) {
        return std::any_of(m_where.cbegin(), m_where.cend(),
                           [&](const auto& where) { return where.first == column; });
    };
    if (m_columns.test >= 0 && m_known.keptTest.isEmpty() && !m_job.options.testName &&
        !isFiltered(m_columns.test))
        m_parts.watch(m_columns.test, TableParts::Kind::Test);
    for (const int column : m_columns.traits)
        if (!isFiltered(column))
            m_parts.watch(column, TableParts::Kind::Trait);
    const bool isParted = m_columns.test >= 0 || !m_columns.traits.isEmpty() ||
                          !m_where.isEmpty() || !m_known.smallChromosomes.isEmpty();
    m_plainRows.emplace(m_tables.first(), m_job.options, isParted);
    return std::nullopt;
}

Failure Preparation::run() {
    if (Failure failure = findColumns())
        return failure;
    for (int input = 0; input < m_job.inputs.size(); ++input) {
        m_input = input;
        if (Failure failure = readInput(input))
            return failure;
        if (foundAdditiveTest()) {
            m_discovery = Discovery{"ADD", false, {}};
            return std::nullopt;
        }
    }
    if (m_report.written > 0)
        m_converter.counts().labels = std::ssize(m_sink.chromosomes());
    if (Failure refusal = judge(m_converter.counts(), m_tables.first()))
        return refusal;
    if (m_converter.counts().haveManyLabels() && m_columns.isChromosomeNamed)
        m_report.remarks += manyChromosomes();
    if (Failure refusal = m_parts.judge(m_tables.first().format.titles))
        return refusal;
    if (!m_sink.isInOrder() && m_parts.needThoroughLook()) {
        m_discovery = Discovery{m_known.keptTest, true, {}};
        return std::nullopt;
    }
    const WrittenChromosomes chromosomes(m_sink.chromosomes(), m_tables.first().format.titles,
                                         m_job.options.chromosomeNames);
    const QSet<quint32> small = chromosomes.smallerThan(m_job.options.minMarkers);
    if (small == m_known.smallChromosomes)
        return finish(chromosomes);
    m_discovery = Discovery{m_known.keptTest, m_known.isPartedAnywhere, small};
    return std::nullopt;
}

Failure Preparation::readInput(int index) {
    InputFile input(m_job.inputs[index]);
    if (Failure failure = input.open())
        return failure;
    const TableFormat& format = m_tables[index].format;
    TableRows rows(input.text(), format);
    LineFaults faults(format, m_columnsNeeded);
    constexpr qint64 progressStep = 65'536; // rows
    qint64 nextReport = m_report.rows + progressStep;
    while (rows.next()) {
        if (rows.line() <= format.headerLine) {
            if (rows.line() == format.headerLine)
                faults.setHeader(rows.text());
            continue;
        }
        bool isLeft = true;
        if (Failure failure = takePlainRows(rows, isLeft))
            return failure;
        if (isLeft)
            if (Failure failure = takeRow(rows, faults))
                return failure;
        if (foundAdditiveTest())
            return std::nullopt;
        if (m_report.rows >= nextReport) {
            m_job.progress(input.bytesRead());
            nextReport = m_report.rows + progressStep;
        }
    }
    return rows.failed() ? Failure(input.failure()) : std::nullopt;
}

// `isLeft` says that the current row is to be taken by itself.
Failure Preparation::takePlainRows(TableRows& rows, bool& isLeft) {
    const PlainRows::Taken taken = m_plainRows->take(rows, m_sink, m_converter);
    m_report.rows += taken.rows;
    m_report.written += taken.rows;
    m_report.otherSpellings += taken.otherSpellings;
    isLeft = taken.isLeft;
    return m_sink.error().isEmpty() ? std::nullopt : Failure(unwritable());
}

Failure Preparation::takeRow(const TableRows& rows, const LineFaults& faults) {
    ++m_report.rows;
    std::optional<DropReason> reason = faults.find(rows);
    if (!reason)
        reason = filterFault(rows);
    m_text.clear();
    const qint64 zeros = m_converter.met().zeroBySmallest;
    if (!reason)
        reason = m_converter.append(rows, m_text);
    std::string_view label;
    int position = 0;
    if (!reason)
        reason = m_places.read(rows, label, position);
    bool isOtherSpelling = false;
    const quint32 chromosome = reason ? 0 : m_sink.chromosome(label, isOtherSpelling);
    if (!reason && m_known.smallChromosomes.contains(chromosome))
        reason = DropReason::SmallChromosome;
    if (reason) {
        m_droppedZeros += m_converter.met().zeroBySmallest - zeros;
        drop(*reason, rows);
        return std::nullopt;
    }
    appendName(rows);
    m_report.otherSpellings += isOtherSpelling ? 1 : 0;
    m_parts.note(rows, chromosome, position);
    ++m_report.written;
    return m_sink.add(chromosome, position, m_text.view()) ? std::nullopt : Failure(unwritable());
}

std::optional<DropReason> Preparation::filterFault(const TableRows& rows) const {
    for (const auto& [column, value] : m_where)
        if (rows.field(static_cast<size_t>(column)) != viewOf(value))
            return DropReason::WrongTest;
    const QByteArray& test = m_job.options.testName ? *m_job.options.testName : m_known.keptTest;
    if (!test.isEmpty() && m_columns.test >= 0 &&
        rows.field(static_cast<size_t>(m_columns.test)) != viewOf(test))
        return DropReason::WrongTest;
    return std::nullopt;
}

void Preparation::appendName(const TableRows& rows) {
    if (const int name = nameColumn(m_columns); name >= 0)
        appendField(rows, name);
    for (const int column : std::as_const(m_extraColumns))
        appendField(rows, column);
    if (!m_job.options.lineNumbers)
        return;
    m_text.append('\t');
    m_text.append(viewOf(QByteArray::number(rows.line())));
}

void Preparation::appendField(const TableRows& rows, int column) {
    const std::string_view field = rows.fieldOrNone(column);
    m_text.append('\t');
    if (field.empty())
        return;
    if (!rows.mayHoldTabs() || field.find('\t') == std::string_view::npos)
        m_text.appendPadded(field);
    else
        m_text.append(viewOf(bytesOf(field).replace('\t', ' ')));
}

void Preparation::drop(DropReason reason, const TableRows& rows) {
    Dropped& dropped = m_report.dropped[static_cast<size_t>(reason)];
    ++dropped.count;
    if (dropped.firstLines.size() < reportedLines)
        dropped.firstLines.append({m_input, rows.line()});
    if (!m_job.dropped)
        return;
    QByteArray line(nameOf(reason).latin1());
    if (m_job.inputs.size() > 1)
        line += '\t' + m_job.names.value(m_input, m_job.inputs[m_input]).toUtf8();
    line += '\t' + QByteArray::number(rows.line()) + '\t' + bytesOf(rows.text()) + '\n';
    m_job.dropped->write(line);
}

QString Preparation::manyChromosomes() const {
    const ValueCounts& counts = m_converter.counts();
    return QStringLiteral("More than half of the lines have a chromosome of their own (%1 in %2 "
                          "lines), as marker names would: taken since --chromosome says so.")
        .arg(*counts.labels)
        .arg(counts.chromosomeRows);
}

// What to do about the reason for which most rows are dropped.
Refusal Preparation::nothingWritten() const {
    Refusal refusal{RefusalCode::NotATable, {}, {}, {}, m_tables.first().format.headerLine};
    QStringList reasons;
    qint64 most = 0;
    for (int reason = 0; reason < dropReasonCount; ++reason) {
        const qint64 count = m_report.dropped[static_cast<size_t>(reason)].count;
        if (count == 0)
            continue;
        const auto why = static_cast<DropReason>(reason);
        reasons << QStringLiteral("%1 %2").arg(nameOf(why)).arg(count);
        if (count > most)
            refusal.options = optionsAgainst(why, m_columns);
        most = std::max(most, count);
    }
    refusal.message =
        QStringLiteral("None of the %1 rows can be used: %2.")
            .arg(m_report.rows)
            .arg(reasons.isEmpty() ? QStringLiteral("there are none") : reasons.join(", "));
    return refusal;
}

Failure Preparation::finish(const WrittenChromosomes& chromosomes) {
    collect(m_converter);
    const PrepareOptions& options = m_job.options;
    if (m_report.zeroBySmallest > 0 && options.zeroP == ZeroP::Fail)
        return Refusal{RefusalCode::ZeroP,
                       QStringLiteral("%1 rows have a p of 0.").arg(m_report.zeroBySmallest),
                       {},
                       {"--zero smallest", "--zero drop"}};
    if (m_report.zeroBySmallest > 0 && m_converter.smallestText().isEmpty())
        return Refusal{RefusalCode::ZeroP,
                       QStringLiteral("No p-value is above 0, so there is none to write for 0."),
                       {},
                       {}};
    if (m_report.written == 0)
        return nothingWritten();
    const NamedChromosomes& named = chromosomes.named();
    m_report.remarks += named.remarks;
    const RowSink::Finish finish{named.names, RowSink::ranks(named.names),
                                 m_report.zeroBySmallest > 0 ? m_converter.smallestText()
                                                             : QByteArray(),
                                 m_report.zeroBySmallest > 0 || !chromosomes.areAllKept()};
    m_report.chromosomes = chromosomes.counts(finish.ranks);
    if (!m_sink.finish(finish))
        return unwritable();
    m_report.wasInOrder = m_sink.isInOrder();
    return std::nullopt;
}

void Preparation::collect(const PConverter& converter) {
    const PrepareReport& met = converter.met();
    m_report.bounds = met.bounds;
    m_report.roundedToOne = met.roundedToOne;
    m_report.belowSmallest = met.belowSmallest;
    m_report.strongest = met.strongest;
    m_report.strongestLine = met.strongestLine;
    m_report.zeroByLog = met.zeroByLog;
    m_report.zeroBySmallest = met.zeroBySmallest - m_droppedZeros;
    m_report.smallestP = converter.smallestText().split('\t').first();
}

} // namespace

std::variant<PrepareReport, Refusal> prepare(const PrepareJob& job, QFileDevice& output) {
    const auto understood = understandFiles(job.inputs, job.options);
    if (const auto* refusal = std::get_if<Refusal>(&understood))
        return *refusal;
    const auto& tables = std::get<QList<Understanding>>(understood);
    PositionTable positions;
    if (!job.options.positionsFile.isEmpty())
        if (const Failure failure = positions.read(job.options.positionsFile))
            return *failure;
    for (Discovery known;;) {
        if (!output.resize(0) || !output.seek(0) ||
            (job.dropped && (!job.dropped->resize(0) || !job.dropped->seek(0))))
            return Refusal{RefusalCode::Unwritable, output.errorString(), {}, {}};
        Preparation preparation(job, tables, positions, output, known);
        if (const Failure failure = preparation.run())
            return *failure;
        if (!preparation.discovery())
            return preparation.report();
        known = *preparation.discovery();
    }
}
