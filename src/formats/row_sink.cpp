#include "row_sink.h"

#include "chromosome_names.h"
#include "file_writing.h"
#include "p_converter.h"
#include "titles.h"

#include <QDir>
#include <QTemporaryFile>
#include <algorithm>
#include <charconv>
#include <functional>
#include <numeric>

namespace {

constexpr size_t bytesAtOnce = 256 * 1024;

// Rows that were written in order, read back line by line.
class WrittenRows {
public:
    WrittenRows(QIODevice& device, const std::vector<WrittenRun>& runs)
        : m_device(device), m_runs(runs) {}

    // False after the last row, and where the file cannot be read.
    bool next(OrderedRow& row) {
        while (m_run < m_runs.size() && m_taken == m_runs[m_run].rows) {
            ++m_run;
            m_taken = 0;
        }
        if (m_run == m_runs.size())
            return false;
        m_line = m_device.readLine();
        m_failed = !m_line.endsWith('\n');
        if (m_failed)
            return false;
        ++m_taken;
        const qsizetype position = m_line.indexOf('\t') + 1, text = m_line.indexOf('\t', position);
        row.chromosome = m_runs[m_run].chromosome;
        std::from_chars(m_line.constData() + position, m_line.constData() + text, row.position);
        row.text = viewOf(m_line).substr(size_t(text + 1), size_t(m_line.size() - text - 2));
        return true;
    }

    bool failed() const { return m_failed; }

private:
    QIODevice& m_device;
    const std::vector<WrittenRun>& m_runs;
    size_t m_run = 0;
    qint64 m_taken = 0;
    QByteArray m_line;
    bool m_failed = false;
};

bool copyAll(QIODevice& from, QFileDevice& to) {
    QByteArray block(qsizetype(bytesAtOnce), '\0');
    for (qint64 got = 0; (got = from.read(block.data(), block.size())) != 0;)
        if (got < 0 || !writeAll(to, viewOf(block).substr(0, size_t(got))))
            return false;
    return true;
}

// Which of the answers kept may be the label's. Names of chromosomes that differ have different
// ones, most often, which their last two characters are enough for.
size_t slotOf(std::string_view label, size_t count) {
    size_t slot = 0;
    for (const char character : label.substr(label.size() - std::min<size_t>(label.size(), 2)))
        slot = 10 * slot + static_cast<unsigned char>(character);
    return slot % count;
}

} // namespace

RowSink::RowSink(QFileDevice& output, const QByteArray& header, qint64 memory)
    : m_output(output), m_header(header + '\n'), m_memory(memory) {
    m_block.append(viewOf(m_header));
}

quint32 RowSink::chromosome(std::string_view label, bool& isOtherSpelling) {
    Answer& answer = m_answers[slotOf(label, m_answers.size())];
    if (answer.label.isNull() || viewOf(answer.label) != label)
        answer = answerTo(bytesOf(label));
    isOtherSpelling = answer.isOtherSpelling;
    return answer.chromosome;
}

RowSink::Answer RowSink::answerTo(const QByteArray& label) {
    auto found = m_byLabel.find(label.toStdString());
    if (found == m_byLabel.end()) {
        const QByteArray spelling = QByteArray(label).replace('\t', ' '); // the output has tabs
        const QByteArray key = chromosomeKey(viewOf(spelling));
        const auto known = m_byKey.constFind(key);
        const auto number =
            known != m_byKey.constEnd() ? *known : static_cast<quint32>(m_chromosomes.size());
        if (known == m_byKey.constEnd()) {
            m_byKey.insert(key, number);
            m_chromosomes.push_back({spelling, 0});
        }
        found = m_byLabel.emplace(label.toStdString(), number).first;
    }
    const quint32 number = found->second;
    return {label, number, m_chromosomes[number].label != label};
}

bool RowSink::isAfterLast(quint32 chromosome, int position) const {
    if (m_runs.empty())
        return true;
    const quint32 last = m_runs.back().chromosome;
    if (chromosome == last)
        return position >= m_lastPosition;
    // Chromosomes that neither comes before the other are in order of their first rows.
    const auto label = [&](quint32 c) { return viewOf(m_chromosomes[c].label); };
    return isBefore(label(last), label(chromosome)) ||
           (!isBefore(label(chromosome), label(last)) && chromosome > last);
}

bool RowSink::add(quint32 chromosome, int position, std::string_view text) {
    TableChromosome& added = m_chromosomes[chromosome];
    ++added.markers;
    const bool isNext = !m_rows && !m_runs.empty() && m_runs.back().chromosome == chromosome &&
                        position >= m_lastPosition;
    if (!isNext && !startRun(chromosome, position)) {
        if (m_rows->add(chromosome, position, text))
            return true;
        m_error = m_rows->error();
        return false;
    }
    ++m_runs.back().rows;
    m_lastPosition = position;
    startLine(viewOf(added.label), position);
    m_block.appendPadded(text);
    return endLine();
}

std::string_view RowSink::runLabel() const {
    const QByteArray& label = m_chromosomes[m_runs.back().chromosome].label;
    return {label.constData(), static_cast<size_t>(label.size())};
}

bool RowSink::extendRun(qint64 rows, int lastPosition) {
    m_runs.back().rows += rows;
    m_chromosomes[m_runs.back().chromosome].markers += rows;
    m_lastPosition = lastPosition;
    return m_block.size() < bytesAtOnce || flush();
}

// False where the row does not come in order, or one before it did not.
bool RowSink::startRun(quint32 chromosome, int position) {
    if (!m_rows && !isAfterLast(chromosome, position))
        m_rows = std::make_unique<OrderedRows>(m_memory);
    if (m_rows)
        return false;
    m_runs.push_back({chromosome, 0});
    return true;
}

void RowSink::startLine(std::string_view name, int position) {
    constexpr size_t longestPosition = 11;
    m_block.append(name);
    char* at = m_block.room(longestPosition + 2);
    *at++ = '\t';
    at = std::to_chars(at, at + longestPosition, position).ptr;
    *at++ = '\t';
    m_block.setEnd(at);
}

bool RowSink::endLine() {
    m_block.append('\n');
    return m_block.size() < bytesAtOnce || flush();
}

bool RowSink::flush() {
    const bool isWritten = writeAll(m_output, m_block.view());
    m_block.clear();
    return isWritten || fail(m_output);
}

// Returns false, for the callers to return.
bool RowSink::fail(QFileDevice& file) {
    const QString what = &file == &m_output
                             ? QStringLiteral("the table")
                             : QStringLiteral("a temporary file in ") + QDir::tempPath();
    m_error = QStringLiteral("%1 cannot be written: %2").arg(what, writeError(file));
    return false;
}

QList<quint32> RowSink::ranks(const QList<QByteArray>& names) {
    std::vector<ComparedLabel> labels;
    labels.reserve(static_cast<size_t>(names.size()));
    for (const QByteArray& name : names)
        labels.emplace_back(viewOf(name));
    QList<quint32> order(names.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](quint32 a, quint32 b) { return labels[a] < labels[b]; });
    QList<quint32> ranks(order.size());
    quint32 rank = 0;
    for (qsizetype place = 0; place < order.size(); ++place) {
        if (place > 0 && names[order[place]] != names[order[place - 1]])
            ++rank;
        ranks[order[place]] = rank;
    }
    return ranks;
}

bool RowSink::finish(const Finish& finish) {
    if (!flush())
        return false;
    if ((m_rows || finish.isNeeded) && !(rewrite(finish) && flush()))
        return false;
    return m_output.flush() || fail(m_output);
}

// Rows that came in order move to a file of their own, to be merged with the sorted others.
bool RowSink::rewrite(const Finish& finish) {
    QTemporaryFile written;
    if (!written.open())
        return fail(written);
    if (!moveWritten(written) || !sortAll(written, finish.ranks))
        return false;
    if (m_rows && !m_rows->sort(finish.ranks)) {
        m_error = m_rows->error();
        return false;
    }
    return merge(written, finish);
}

// The names of chromosomes may order them otherwise than their labels did: then the rows that came
// in order have to be sorted too, before the others.
bool RowSink::sortAll(QIODevice& written, const QList<quint32>& ranks) {
    const auto isBelow = [&](const WrittenRun& a, const WrittenRun& b) {
        return ranks[a.chromosome] < ranks[b.chromosome];
    };
    if (std::adjacent_find(m_runs.begin(), m_runs.end(), std::not_fn(isBelow)) == m_runs.end())
        return true;
    auto rows = std::make_unique<OrderedRows>(m_memory);
    WrittenRows early(written, m_runs);
    OrderedRow row;
    bool isTaken = true;
    while (isTaken && early.next(row))
        isTaken = rows->add(row.chromosome, row.position, row.text);
    if (m_rows && m_rows->sort(ranks))
        while (isTaken && m_rows->next(row))
            isTaken = rows->add(row.chromosome, row.position, row.text);
    m_error = early.failed() ? written.errorString() : m_rows ? m_rows->error() : QString();
    if (!isTaken)
        m_error = rows->error();
    m_rows = std::move(rows);
    m_runs.clear();
    return m_error.isEmpty();
}

bool RowSink::moveWritten(QFileDevice& to) {
    const bool isCopied = m_output.seek(m_header.size()) && copyAll(m_output, to) && to.seek(0);
    if (isCopied && m_output.resize(0) && m_output.seek(0))
        return true;
    return fail(to.error() == QFileDevice::NoError ? m_output : to);
}

// Of rows with equal places those that came in order are first, as they were in the table.
bool RowSink::merge(QIODevice& written, const Finish& finish) {
    WrittenRows early(written, m_runs);
    OrderedRow first, second;
    bool isFirst = early.next(first), isSecond = m_rows && m_rows->next(second);
    const auto placeOf = [&](const OrderedRow& row) {
        return std::pair(finish.ranks[row.chromosome], row.position);
    };
    m_block.clear();
    m_block.append(viewOf(m_header));
    while (isFirst || isSecond) {
        const bool takesFirst = isFirst && (!isSecond || placeOf(first) <= placeOf(second));
        if (!appendFinished(takesFirst ? first : second, finish))
            return false;
        (takesFirst ? isFirst : isSecond) = takesFirst ? early.next(first) : m_rows->next(second);
    }
    if (early.failed())
        m_error = written.errorString();
    else if (m_rows)
        m_error = m_rows->error();
    return m_error.isEmpty();
}

bool RowSink::appendFinished(const OrderedRow& row, const Finish& finish) {
    const QByteArray& name = finish.names[row.chromosome];
    const std::string_view zero = PConverter::zeroPlaceholder;
    const bool isZero = !finish.zeroText.isEmpty() && row.text.starts_with(zero) &&
                        (row.text.size() == zero.size() || row.text[zero.size()] == '\t');
    startLine(viewOf(name), row.position);
    if (isZero)
        m_block.append(viewOf(finish.zeroText));
    m_block.append(isZero ? row.text.substr(zero.size()) : row.text);
    return endLine();
}
