#include "plain_header.h"

#include "plain_body.h"
#include "plain_judge.h"
#include "plain_p.h"
#include "plain_titles.h"
#include "splits.h"
#include "title_table.h"

#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <optional>

namespace plain {

namespace {

QStringList bodyOf(const QStringList& lines) {
    QStringList body;
    for (const QString& line : lines)
        if (!isEmpty(line) && !isComment(line))
            body << line;
    return body;
}

QList<QStringList> fieldsOfBody(const QStringList& body, Separator separator) {
    QList<QStringList> rows;
    for (const QString& line : body)
        rows << fieldsOf(line, separator);
    return rows;
}

// How much a line misses to be a header; the roles are looked for in this order.
int missingOf(RefusalCode code) {
    switch (code) {
    case RefusalCode::UnknownColumn:
        return 4;
    case RefusalCode::NoChromosome:
        return 3;
    case RefusalCode::NoPosition:
        return 2;
    case RefusalCode::NoPValue:
        return 1;
    default:
        return 0;
    }
}

bool isNumber(const QString& text) {
    return decimal(text).isFinite;
}

bool isPrepared(const QString& firstLine, const PrepareOptions& options) {
    QStringList titles;
    for (const std::string_view title : title_table::prepared)
        titles << fromData(title);
    return firstLine.split(u'\t').mid(0, titles.size()) == titles && !options.chromosome &&
           !options.position && !options.p && !options.name && !options.z && !options.test &&
           !options.testName && !options.sample && options.pSource == PSource::Column &&
           options.pScale.value_or(PScale::P) == PScale::P;
}

class HeaderSearch {
public:
    HeaderSearch(const QStringList& lines, const PrepareOptions& options)
        : m_lines(lines), m_options(options), m_hasQuotes(lines.join(u'\n').contains(u'"')) {}

    Table find() {
        if (m_options.noHeader) {
            for (const auto& [header, body] : splits)
                if (areEven(body)) {
                    if (trySeparators(-1, {}, header, body))
                        return m_table;
                    throw Failure{*m_failure};
                }
            throw Failure{RefusalCode::NotATable};
        }
        if (isPrepared(m_lines.value(0), m_options))
            return preparedTable();
        qsizetype lastDoubled = -1;
        for (qsizetype i = 0; i < qMin<qsizetype>(m_lines.size(), 1000); ++i) {
            if (m_lines[i].startsWith("##"))
                lastDoubled = i;
            else if (!isEmpty(m_lines[i]) && tryLine(i, m_lines[i]))
                return m_table;
        }
        if (lastDoubled >= 0 && tryLine(lastDoubled, m_lines[lastDoubled].mid(2)))
            return m_table;
        throw Failure{m_failure.value_or(RefusalCode::NotATable)};
    }

private:
    // Its columns are known, whatever its rows hold.
    Table preparedTable() {
        m_table.header = 0;
        m_table.titles = m_lines.first().split(u'\t');
        if (!chooseColumns({}))
            throw Failure{*m_failure};
        return m_table;
    }

    // Whether the first lines have as many fields each.
    bool areEven(Separator separator) const {
        QSet<qsizetype> counts;
        for (const QString& line : bodyOf(m_lines).mid(0, linesCompared))
            counts << fieldsOf(line, separator).size();
        return counts.size() == 1 && !counts.contains(1);
    }

    bool tryLine(qsizetype line, const QString& text) {
        for (const auto& [header, body] : splits)
            if (trySeparators(line, text.startsWith("# ") ? text.mid(1) : text, header, body))
                return true;
        return false;
    }

    bool trySeparators(qsizetype line, const QString& header, Separator ofHeader,
                       Separator ofBody) {
        m_table = {};
        m_table.separator = ofBody;
        m_table.header = line;
        for (const QString& title : line < 0 ? QStringList() : fieldsOf(header, ofHeader))
            m_table.titles << bareTitle(title);
        if (line >= 0 && (m_table.titles.size() < 2 || hasNumbers(m_table.titles)))
            return false;
        m_table.quoted =
            ofBody == Separator::Comma || ofBody == Separator::Semicolon || m_hasQuotes;
        const QStringList body = bodyOf(m_lines.mid(line + 1));
        if (body.isEmpty())
            return false;
        if (ofHeader == Separator::WhiteSpace && ofBody == Separator::Comma &&
            body.mid(0, linesCompared).join(QString()).contains(u'\t'))
            return false;
        const QList<QStringList> first = fieldsOfBody(body.mid(0, linesCompared + 1), ofBody);
        dropEmptyEnd(first);
        QList<QStringList> rows = fieldsOfBody(body, ofBody);
        const qsizetype columns = line < 0 ? first.first().size() : m_table.titles.size();
        const bool hasRowNames = line >= 0 && !m_table.endsInList() &&
                                 haveOneFieldMore(first, columns) &&
                                 (startWithNumbersInQuotes(body, first) ||
                                  (startWithRowNames(body, first) && !makeSense(rows)));
        if (hasRowNames)
            m_table.titles.prepend(QString());
        else if (!bodyAgrees(first, columns, m_table.endsInList(),
                             line >= 0 &&
                                 (ofBody == Separator::Comma || ofBody == Separator::Semicolon)))
            return false;
        rows.removeIf([&](const QStringList& row) { return m_table.isTooLong(row); });
        m_table.decimalComma = ofBody == Separator::Semicolon ? hasDecimalComma(rows)
                               : ofBody == Separator::Comma
                                   ? false
                                   : hasCommaColumn(rows, columns + (hasRowNames ? 1 : 0));
        return chooseColumns(rows);
    }

    // Whether the titles fit the rows as they stand, by their values.
    bool makeSense(const QList<QStringList>& rows) const {
        const auto chosen = columnsOf(m_table, rows, m_options, false);
        if (!std::holds_alternative<Columns>(chosen))
            return false;
        Table table = m_table;
        table.columns = std::get<Columns>(chosen);
        table.titles << QString(); // no row is then too long
        return !faultOfValues(table);
    }

    std::optional<RefusalCode> faultOfValues(Table table) const {
        try {
            judgeTable(table, rowsOf(m_lines, table, m_options, 0), m_options);
        } catch (const Failure& failure) {
            return failure.code;
        }
        return {};
    }

    bool hasNumbers(const QStringList& titles) const {
        const auto saysP = [](const QString& title) { return pTitle(title).has_value(); };
        return std::any_of(titles.begin(), titles.end(), isNumber) &&
               std::none_of(titles.begin(), titles.end(), saysP);
    }

    // An empty title at the end stands over values, or is none.
    void dropEmptyEnd(const QList<QStringList>& rows) {
        QStringList& titles = m_table.titles;
        const auto isEmptyHere = [&](const QStringList& row) {
            return row.value(titles.size() - 1).isEmpty();
        };
        const auto first = rows.first(qMin(rows.size(), linesCompared));
        while (!titles.isEmpty() && titles.last().isEmpty() &&
               std::all_of(first.begin(), first.end(), isEmptyHere))
            titles.removeLast();
    }

    // Whether commas are decimal points: where one stands in a number, or no point does.
    static bool hasDecimalComma(const QList<QStringList>& rows) {
        bool hasPoint = false;
        for (const QStringList& row : rows.first(qMin(rows.size(), linesCompared)))
            for (const QString& field : row) {
                if (field.count(u',') == 1 && isNumber(QString(field).replace(u',', u'.')))
                    return true;
                hasPoint |= field.contains(u'.') && isNumber(field);
            }
        return !hasPoint;
    }

    // Whether a column has decimal commas throughout: no points, and not all commas part thousands.
    static bool hasCommaColumn(const QList<QStringList>& rows, qsizetype columns) {
        static const QRegularExpression thousands("^[1-9]\\d{0,2}(,\\d{3})+$");
        for (qsizetype column = 0; column < columns; ++column) {
            bool hasComma = false, areNumbers = true;
            for (const QStringList& row : rows.first(qMin<qsizetype>(rows.size(), 1000))) {
                const QString text = row.value(column);
                if (isMissing(text))
                    continue;
                hasComma |= text.contains(u',') && !thousands.match(text).hasMatch();
                const PText::Kind kind = readP(QString(text).replace(u',', u'.')).kind;
                areNumbers &=
                    !text.contains(u'.') && kind != PText::Missing && kind != PText::NotANumber;
            }
            if (hasComma && areNumbers)
                return true;
        }
        return false;
    }

    // Whether only texts have commas: the numbers have points, and no column of them has commas
    // throughout.
    bool areCommasInTexts(const QList<QStringList>& rows, const Columns& columns) const {
        bool hasPoint = false;
        for (const int column :
             {columns.position, columns.p, columns.log, columns.effect, columns.error}) {
            QList<QStringList> values;
            for (const QStringList& row : rows.first(qMin<qsizetype>(rows.size(), 1000)))
                values << QStringList{column < 0 ? QString() : row.value(column)};
            if (hasCommaColumn(values, 1))
                return false;
            for (const QStringList& value : values)
                hasPoint |= value.first().contains(u'.') && isNumber(value.first());
        }
        return hasPoint;
    }

    bool chooseColumns(const QList<QStringList>& rows) {
        const bool prepared = m_table.header == 0 && isPrepared(m_lines.first(), m_options);
        const auto chosen = columnsOf(m_table, rows, m_options, prepared);
        const auto* columns = std::get_if<Columns>(&chosen);
        m_table.columns = columns ? *columns : Columns();
        if (columns && m_table.decimalComma && m_table.separator != Separator::Semicolon &&
            areCommasInTexts(rows, *columns)) {
            m_table.decimalComma = false;
            return chooseColumns(rows);
        }
        const std::optional<RefusalCode> fault =
            columns ? faultOfValues(m_table) : std::get<RefusalCode>(chosen);
        if (!fault)
            return true;
        const RefusalCode code = *fault;
        if (missingOf(code) == 0)
            throw Failure{code};
        if (!m_failure || missingOf(code) < missingOf(*m_failure))
            m_failure = code;
        return false;
    }

    const QStringList& m_lines;
    const PrepareOptions& m_options;
    const bool m_hasQuotes;
    std::optional<RefusalCode> m_failure;
    Table m_table;
};

} // namespace

Table findTable(const QStringList& lines, const PrepareOptions& options) {
    return HeaderSearch(lines, options).find();
}

} // namespace plain
