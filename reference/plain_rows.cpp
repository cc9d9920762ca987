#include "plain_rows.h"

#include "plain_layout.h"
#include "plain_place.h"
#include "plain_titles.h"
#include "title_table.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>

namespace plain {

namespace {

template <typename List>
int columnIn(const QStringList& titles, const List& list) {
    for (const auto& [title, rank] : list)
        for (int i = 0; i < titles.size(); ++i)
            if (placeTitle(titles[i]) == fromData(title))
                return i;
    return -1;
}

// A table of positions: with titles, or chromosome, name, distance and position without.
QHash<QString, Place> placesIn(const QString& path) {
    QHash<QString, Place> places;
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return places;
    Layout layout;
    int chromosome = 0, position = 3, name = 1;
    for (const QString& line : linesOf(file.readAll())) {
        const QStringList fields = fieldsOf(line, Separator::WhiteSpace);
        const Decimal number = decimal(layout.wholeText(fields.value(position)));
        if (columnIn(fields, title_table::positions) >= 0) {
            layout.quoted = true; // as any table with titles may be
            chromosome = columnIn(fields, title_table::chromosomes);
            position = columnIn(fields, title_table::positions);
            for (int i = 0; i < fields.size(); ++i)
                if (i != chromosome && i != position)
                    name = i;
        } else if (!isMissing(fields.value(chromosome)) && !isMissing(fields.value(name)) &&
                   number.isWhole() && number.value <= 2147483647.0L &&
                   !places.contains(fields.value(name)))
            places[fields.value(name)] = {fields.value(chromosome),
                                          QString::asprintf("%.0Lf", number.value)};
    }
    return places;
}

} // namespace

QString Row::reason() const {
    for (const QString& fault : {lineFault, filterFault, pFault, placeFault})
        if (!fault.isEmpty())
            return fault;
    return isSmall ? QStringLiteral("small-chromosome") : QString();
}

RowReader::RowReader(const Table& table, const PrepareOptions& options)
    : m_table(table), m_options(options), m_places(placesIn(options.positionsFile)) {}

qsizetype RowReader::fieldsNeeded() const {
    const Columns& c = m_table.columns;
    QList<int> columns{c.chromosome, c.position, c.joined, c.p, c.log, c.test, c.effect, c.error};
    if (c.position < 0 && c.joined < 0)
        columns << c.name;
    for (const auto& [column, value] : c.where)
        columns << column;
    return *std::max_element(columns.begin(), columns.end()) + 1;
}

// Whether a line may lack another field than the last, or have one parted in two.
bool RowReader::hasOddFields(const Row& row) const {
    const qsizetype titles = m_table.titles.size();
    if (titles == 0 || m_table.endsInList())
        return false;
    switch (m_table.separator) {
    case Separator::Tab:
        return false;
    case Separator::Comma:
    case Separator::Semicolon:
        return m_table.isTooLong(row.fields);
    default:
        return row.fields.size() != titles;
    }
}

void RowReader::findLineFault(Row& row, const QString& header) const {
    if (isEmpty(row.text))
        row.lineFault = "empty";
    else if (row.text == header || (!header.isEmpty() && row.fields == m_table.titles))
        row.lineFault = "repeated-header";
    else if (isComment(row.text) && !m_table.columns.isPrepared)
        row.lineFault = "comment";
    else if (row.fields.size() < fieldsNeeded() || hasOddFields(row))
        row.lineFault = "short-line";
}

void RowReader::findFilterFault(Row& row, const QString& keptTest) const {
    for (const auto& [column, value] : m_table.columns.where)
        if (row.field(column) != value)
            row.filterFault = "wrong-test";
    if (!keptTest.isEmpty() && m_table.columns.test >= 0 &&
        row.field(m_table.columns.test) != keptTest)
        row.filterFault = "wrong-test";
}

QString RowReader::number(const Row& row, int column) const {
    return m_table.withPoint(row.field(column));
}

QString RowReader::pText(const Row& row) const {
    return number(row, m_table.columns.p);
}

QString RowReader::logText(const Row& row) const {
    const Columns& c = m_table.columns;
    if (c.log < 0) {
        for (const QString& entry : row.field(c.info).split(u';'))
            if (entry.startsWith("LOG10P="))
                return m_table.withPoint(entry.mid(7));
        return {};
    }
    if (c.format < 0)
        return number(row, c.log);
    const qsizetype place = row.field(c.format).split(u':').indexOf("LP");
    return place < 0 ? QString() : row.field(c.log).split(u':').value(place);
}

void RowReader::readP(Row& row) const {
    const Columns& c = m_table.columns;
    if (c.effect >= 0) {
        row.p = readZ(number(row, c.effect), c.error < 0 ? QString("1") : number(row, c.error));
    } else if (c.p < 0) {
        row.p = readLog(logText(row), c.logScale);
    } else {
        row.p = plain::readP(pText(row));
        const PText log = readLog(logText(row), c.logScale);
        if (c.isPrepared && row.p.kind == PText::Good && !row.p.isOnlyText &&
            decimal(logText(row)).isFinite && !pText(row).startsWith(u'<') &&
            decimal(pText(row)).value <= 1)
            row.p.log = logText(row);
        else if (row.p.isOnlyText && c.logScale != PScale::Ln && log.kind == PText::Good &&
                 log.negLog10 > 0)
            row.p = log;
    }
    if (row.p.kind == PText::Missing)
        row.pFault = "p-missing";
    if (row.p.kind == PText::NotANumber)
        row.pFault = "p-not-a-number";
    if (row.p.kind == PText::OutOfRange)
        row.pFault = "p-out-of-range";
    if (row.p.kind == PText::Zero && m_options.zeroP == ZeroP::Drop)
        row.pFault = "p-zero";
}

void RowReader::readPlace(Row& row) const {
    const Columns& c = m_table.columns;
    QString position = row.field(c.position);
    row.chromosome = c.chromosome >= 0
                         ? row.field(c.chromosome)
                         : QString::fromLatin1(m_options.chromosomeValue.value_or(""));
    if (c.joined >= 0) {
        const auto place = joinedPlace(row.field(c.joined));
        if (!place) {
            row.placeFault = "joined-id-unreadable";
            return;
        }
        row.chromosome = place->first;
        position = place->second;
    } else if (c.position < 0) {
        if (!m_places.contains(row.field(c.name))) {
            row.placeFault = "no-position-in-table";
            return;
        }
        row.chromosome = m_places[row.field(c.name)].chromosome;
        position = m_places[row.field(c.name)].position;
    }
    row.chromosome.replace(u'\t', u' ');
    const QStringList nowhere{"0", "-9"};
    if (nowhere.contains(row.chromosome) && nowhere.contains(position) && !isByName())
        row.placeFault = "chromosome-missing";
    else
        row.placeFault = readPosition(position, row.position);
    if (row.placeFault.isEmpty() && isMissing(row.chromosome))
        row.placeFault = "chromosome-missing";
}

Decimal RowReader::positionNumber(const Row& row) const {
    return decimal(m_table.wholeText(row.field(m_table.columns.position)));
}

QString RowReader::readPosition(const QString& text, qint64& position) const {
    if (isMissing(text))
        return "position-missing";
    const Decimal number = decimal(m_table.wholeText(text));
    if (!number.isWhole())
        return "position-not-whole";
    const long double value = number.value + (m_options.zeroBased && !isByName() ? 1 : 0);
    if (value < 1)
        return "position-not-positive";
    if (value > 2147483647.0L)
        return "position-too-large";
    position = static_cast<qint64>(value);
    return {};
}

QList<Row> rowsOf(const QStringList& lines, const Table& table, const PrepareOptions& options,
                  int input) {
    const RowReader reader(table, options);
    QList<Row> rows;
    for (qsizetype i = table.header + 1; i < lines.size(); ++i) {
        Row row;
        row.input = input;
        row.line = i + 1;
        row.text = lines[i];
        row.fields = fieldsOf(lines[i], table.separator);
        reader.findLineFault(row, table.header < 0 ? QString() : lines[table.header]);
        rows << row;
    }
    return rows;
}

} // namespace plain
