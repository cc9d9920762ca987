#include "plain_prepare.h"

#include "plain_chromosomes.h"
#include "plain_header.h"
#include "plain_judge.h"
#include "plain_layout.h"
#include "plain_rows.h"
#include "plain_titles.h"
#include "title_table.h"

#include <QSet>
#include <algorithm>
#include <memory>

namespace plain {

namespace {

QStringList normalTitles(QStringList titles) {
    for (QString& title : titles)
        title = normalTitle(title);
    return titles;
}

class Preparation {
public:
    explicit Preparation(const PrepareOptions& options) : m_options(options) {}

    Prepared run(const QList<QByteArray>& inputs) {
        for (int input = 0; input < inputs.size(); ++input)
            read(input, linesOf(inputs[input]));
        for (Row& row : m_rows) {
            m_reader->readPlace(row);
            m_reader->readP(row);
        }
        filter(m_options.testName ? QString::fromLatin1(*m_options.testName) : QString());
        judgeTests();
        judgeFiltered();
        for (const int column : m_table.columns.traits)
            if (!isFiltered(column) && aMarkerComesUnderTwo(column))
                throw Failure{RefusalCode::SeveralTraits};
        nameChromosomes();
        dropSmallChromosomes();
        replaceZeros();
        return result();
    }

private:
    // Finds out how an input is laid out, judges its values, and takes its rows.
    void read(int input, const QStringList& lines) {
        Table table = findTable(lines, m_options);
        const QList<Row> rows = rowsOf(lines, table, m_options, input);
        judgeTable(table, rows, m_options);
        if (input == 0) {
            m_table = table;
            m_reader = std::make_unique<RowReader>(m_table, m_options);
        } else if (normalTitles(table.titles) != normalTitles(m_table.titles)) {
            throw Failure{RefusalCode::DifferentColumns};
        }
        m_rows += rows;
    }

    void filter(const QString& test) {
        for (Row& row : m_rows)
            m_reader->findFilterFault(row, test);
    }

    // The rows that were to be written are judged again, now that all are known. A place counts
    // where the row has a p.
    void judgeFiltered() const {
        QList<Row> rows = m_rows;
        rows.removeIf(
            [](const Row& row) { return !row.lineFault.isEmpty() || !row.filterFault.isEmpty(); });
        Columns columns = m_table.columns;
        columns.chromosome = -1;
        columns.position = -1;
        judge(rows, *m_reader, columns);
        rows.removeIf([](const Row& row) { return !row.pFault.isEmpty(); });
        rows.removeIf([](const Row& row) { return row.placeFault == u"chromosome-missing"; });
        columns = {};
        columns.position = m_table.columns.position;
        judge(rows, *m_reader, columns);
    }

    bool isFiltered(int column) const {
        for (const auto& [filtered, value] : m_table.columns.where)
            if (filtered == column)
                return true;
        return false;
    }

    QSet<QString> valuesOf(int column) const {
        QSet<QString> values;
        for (const Row& row : m_rows)
            if (row.isWritten())
                values << row.field(column);
        return values;
    }

    bool aMarkerComesUnderTwo(int column) const {
        QMap<QStringList, QString> seen;
        for (const Row& row : m_rows) {
            if (!row.isWritten())
                continue;
            const QStringList marker{chromosomeKey(row.chromosome), QString::number(row.position),
                                     row.field(m_table.columns.name)};
            if (seen.contains(marker) && seen[marker] != row.field(column))
                return true;
            seen[marker] = row.field(column);
        }
        return false;
    }

    void judgeTests() {
        const int column = m_table.columns.test;
        if (column < 0 || m_options.testName || isFiltered(column))
            return;
        const QSet<QString> tests = valuesOf(column);
        if (tests.size() > 1 && tests.contains("ADD"))
            filter("ADD");
        else if (tests.size() > 1 && aMarkerComesUnderTwo(column))
            throw Failure{RefusalCode::SeveralTests};
    }

    void nameChromosomes() {
        QMap<QString, QString> firstSpelling;
        for (const Row& row : m_rows)
            if (row.isWritten() && !firstSpelling.contains(chromosomeKey(row.chromosome)))
                firstSpelling[chromosomeKey(row.chromosome)] = row.chromosome;
        const ChromosomeWriter writer(firstSpelling.values(), m_table.titles,
                                      m_options.chromosomeNames);
        for (Row& row : m_rows)
            if (row.isWritten())
                row.chromosome = writer.nameOf(firstSpelling[chromosomeKey(row.chromosome)]);
    }

    void dropSmallChromosomes() {
        QMap<QString, qint64> markers;
        for (const Row& row : m_rows)
            if (row.isWritten())
                ++markers[row.chromosome];
        for (Row& row : m_rows)
            row.isSmall = row.isWritten() && markers[row.chromosome] < m_options.minMarkers;
    }

    // The smallest p is that of the file, whether or not its row has a place.
    void replaceZeros() {
        std::optional<PText> smallest;
        for (const Row& row : m_rows)
            if (row.lineFault.isEmpty() && row.filterFault.isEmpty() && row.p.kind == PText::Good &&
                row.p.negLog10 > 0 && (!smallest || row.p.negLog10 > smallest->negLog10))
                smallest = row.p;
        for (Row& row : m_rows) {
            if (!row.isWritten() || row.p.kind != PText::Zero)
                continue;
            if (m_options.zeroP == ZeroP::Fail || !smallest)
                throw Failure{RefusalCode::ZeroP};
            row.p = *smallest;
        }
    }

    QList<int> otherColumns() const {
        const Columns& c = m_table.columns;
        QList<int> others;
        for (int i = 0; i < m_table.titles.size(); ++i)
            if (i != (c.isPrepared ? 0 : c.chromosome) && i != c.position && i != c.p &&
                i != c.name && ((c.p >= 0 && !c.isPrepared) || i != c.log))
                others << i;
        return m_options.allColumns || c.isPrepared ? others : QList<int>();
    }

    QByteArray headerLine() const {
        QStringList titles;
        for (const std::string_view title : title_table::prepared)
            titles << fromData(title);
        if (const int name = m_table.columns.name; name >= 0)
            titles << m_table.titles.value(name, "V" + QString::number(name + 1));
        for (const int column : otherColumns())
            titles << m_table.titles[column];
        if (m_options.lineNumbers)
            titles << "Line";
        return titles.join(u'\t').toLatin1() + '\n';
    }

    QByteArray rowLine(const Row& row) const {
        QStringList texts{row.chromosome, QString::number(row.position), row.p.p, row.p.log};
        if (m_table.columns.name >= 0)
            texts << row.field(m_table.columns.name).replace(u'\t', u' ');
        for (const int column : otherColumns())
            texts << row.field(column).replace(u'\t', u' ');
        if (m_options.lineNumbers)
            texts << QString::number(row.line);
        return texts.join(u'\t').toLatin1() + '\n';
    }

    Prepared result() const {
        Prepared prepared;
        QList<Row> kept;
        for (const Row& row : m_rows)
            if (row.isWritten())
                kept << row;
            else
                ++prepared.dropped[row.reason()];
        if (kept.isEmpty())
            throw Failure{RefusalCode::NotATable};
        std::stable_sort(kept.begin(), kept.end(), [](const Row& a, const Row& b) {
            const QString keyA = chromosomeKey(a.chromosome), keyB = chromosomeKey(b.chromosome);
            return keyA == keyB ? a.position < b.position : comesBefore(keyA, keyB);
        });
        prepared.table = headerLine();
        for (const Row& row : kept)
            prepared.table += rowLine(row);
        return prepared;
    }

    const PrepareOptions& m_options;
    Table m_table; // of the first input
    std::unique_ptr<RowReader> m_reader;
    QList<Row> m_rows;
};

} // namespace

Prepared prepare(const QList<QByteArray>& inputs, const PrepareOptions& options) {
    try {
        return Preparation(options).run(inputs);
    } catch (const Failure& failure) {
        Prepared refused;
        refused.refused = failure.code;
        return refused;
    }
}

} // namespace plain
