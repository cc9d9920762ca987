#include "header_search.h"

#include "body_agreement.h"
#include "column_choice.h"
#include "line_faults.h"
#include "role_titles.h"
#include "splits.h"
#include "title_table.h"
#include "titles.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

constexpr qsizetype linesTried = 1'000;

// What came of taking a line for the header.
struct Attempt {
    Understanding understanding;
    std::optional<Refusal> refusal;
    int score = 0; // how many roles the titles say
};

bool isBody(const HeadLine& line) {
    return !line.isEmpty() && !line.isComment();
}

QList<HeadLine> bodyFrom(const QList<HeadLine>& lines, qsizetype from) {
    QList<HeadLine> body;
    std::copy_if(lines.begin() + from, lines.end(), std::back_inserter(body), isBody);
    return body;
}

// The titles of a line; "#" apart from the first title, and "##", say only that it is a comment.
QList<QByteArray> titlesOf(const HeadLine& line, const TableFormat& format) {
    std::string_view text = line.text;
    const size_t marks = std::min(text.find_first_not_of('#'), text.size());
    if (marks > 1 || (marks == 1 && text.substr(1, 1) == " "))
        text.remove_prefix(marks);
    QList<QByteArray> titles;
    for (const QByteArray& field : HeadTable(format, {}).fields({text, line.number}))
        titles += bareTitle(viewOf(field));
    return titles;
}

// An empty title at the end is a column only where values stand under it.
void dropEmptyEnd(HeadTable& table) {
    QList<QByteArray>& titles = table.format().titles;
    const auto isEmpty = [](const QByteArray& text) { return text.isEmpty(); };
    const auto hasValues = [&] {
        const QList<QByteArray> texts = table.column(int(titles.size()) - 1, linesCompared);
        return !std::all_of(texts.begin(), texts.end(), isEmpty);
    };
    while (!titles.isEmpty() && titles.last().isEmpty() && !hasValues())
        titles.removeLast();
}

int scoreOf(const QList<QByteArray>& titles) {
    return int(saysChromosome(titles)) + int(saysPosition(titles)) + int(saysPValue(titles)) +
           int(saysName(titles));
}

bool namesColumns(const PrepareOptions& options) {
    return options.chromosome || options.position || options.p || options.name || options.z;
}

// Whether a prepared table's own columns do not suffice.
bool asksForMore(const PrepareOptions& options) {
    return namesColumns(options) || options.test || options.testName || options.sample ||
           options.pScale.value_or(PScale::P) != PScale::P || options.pSource != PSource::Column;
}

// Commas with a space after each part these titles, not the spaces.
bool endInCommas(const QList<QByteArray>& titles) {
    const auto ending = std::count_if(titles.begin(), titles.end(),
                                      [](const QByteArray& title) { return title.endsWith(','); });
    return ending + 1 >= titles.size();
}

bool asksForAChoice(const Refusal& refusal) {
    switch (refusal.code) {
    case RefusalCode::NoChromosome:
    case RefusalCode::NoPosition:
    case RefusalCode::NoPValue:
    case RefusalCode::UnknownColumn:
    case RefusalCode::NotATable:
        return false;
    default:
        return true;
    }
}

bool hasQuotes(const QList<HeadLine>& lines) {
    return std::any_of(lines.begin(), lines.end(), [](const HeadLine& line) {
        return line.text.find('"') != std::string_view::npos;
    });
}

// In tables of commas and semicolons a later line may have quotes where no earlier one has.
bool isQuoted(Separator separator, bool hasQuotes) {
    return hasQuotes || separator == Separator::Comma || separator == Separator::Semicolon;
}

// The first separator that parts the first lines into as many fields each.
std::optional<HeadTable> evenTable(const QList<HeadLine>& body) {
    for (const Split& split : splits) {
        TableFormat format;
        format.separator = split.body;
        format.quoted = isQuoted(split.body, hasQuotes(body));
        HeadTable table(format, body);
        const qsizetype count = body.isEmpty() ? 0 : table.fields(body.first()).size();
        const auto lines = body.first(std::min(linesCompared, body.size()));
        if (count > 1 && std::all_of(lines.begin(), lines.end(), [&](const HeadLine& line) {
                return table.fields(line).size() == count;
            }))
            return table;
    }
    return std::nullopt;
}

// "1 is rs123, 2 is 1, 3 is 752566", to find the columns by.
QString numberedFields(const HeadTable& table) {
    QStringList texts;
    for (const QByteArray& field :
         table.fields(table.body().first())
             .first(std::min(12, int(table.fields(table.body().first()).size()))))
        texts += QStringLiteral("%1 is %2").arg(texts.size() + 1).arg(QString::fromUtf8(field));
    return texts.join(QStringLiteral(", "));
}

// Between titles that blanks or tabs part, tabs part the lines: their commas are in numbers or
// texts.
bool hasTabs(const HeadTable& table) {
    const auto lines = table.body().first(std::min(linesCompared, table.body().size()));
    return std::any_of(lines.begin(), lines.end(), [](const HeadLine& line) {
        return line.text.find('\t') != std::string_view::npos;
    });
}

class HeaderSearch {
public:
    HeaderSearch(const QList<HeadLine>& lines, bool isWhole, const PrepareOptions& options)
        : m_lines(lines), m_isWhole(isWhole), m_options(options) {
        m_isQuoted = hasQuotes(lines);
    }

    std::variant<Understanding, Refusal> search() {
        qsizetype tried = 0;
        qsizetype lastComment = -1;
        for (qsizetype at = 0; at < m_lines.size() && tried < linesTried; ++at) {
            if (m_lines[at].text.substr(0, 2) == "##")
                lastComment = at;
            else if (!m_lines[at].isEmpty() && ++tried > 0 && tryLine(at))
                return result(*m_found);
        }
        if (lastComment >= 0 && tryLine(lastComment))
            return result(*m_found);
        return m_best ? result(*m_best) : notATable();
    }

private:
    // True where the line is the header, whether or not a choice is left to the user.
    bool tryLine(qsizetype at) {
        for (const Split& split : splits) {
            std::optional<Attempt> attempt = tryAs(at, split);
            if (!attempt)
                continue;
            if (!attempt->refusal || asksForAChoice(*attempt->refusal)) {
                m_found = attempt;
                return true;
            }
            if (isTelling(*attempt) && (!m_best || attempt->score > m_best->score))
                m_best = attempt;
        }
        return false;
    }

    // Enough titles to say what the table lacks; a line of prose may have one by chance.
    bool isTelling(const Attempt& attempt) const {
        const TableFormat& format = attempt.understanding.format;
        return attempt.score > 1 || namesColumns(m_options) ||
               (attempt.score == 1 &&
                (format.titles.size() > 2 || format.separator == Separator::Tab));
    }

    // Nothing where the line makes no sense as header.
    std::optional<Attempt> tryAs(qsizetype at, const Split& split) {
        TableFormat format;
        format.separator = split.header;
        format.quoted = isQuoted(split.body, m_isQuoted);
        format.titles = titlesOf(m_lines[at], format);
        format.separator = split.body;
        format.headerLine = m_lines[at].number;
        const int score = scoreOf(format.titles);
        if (format.titles.size() < 2 || endInCommas(format.titles) ||
            (score == 0 && !namesColumns(m_options)) || (score < 3 && hasNumbers(format.titles)))
            return std::nullopt;
        HeadTable table(format, bodyFrom(m_lines, at + 1));
        if (split.header == Separator::WhiteSpace && split.body == Separator::Comma &&
            hasTabs(table))
            return std::nullopt;
        dropEmptyEnd(table);
        return table.titles().size() < 2 ? std::nullopt : tryTable(table, score);
    }

    std::optional<Attempt> tryTable(HeadTable& table, int score) {
        Attempt attempt{{}, std::nullopt, score};
        const Agreement agrees = agreement(table, m_isWhole);
        if (agrees == Agreement::OneFieldMore &&
            (startWithNumberedRowNames(table) || (startWithRowNames(table) && !makesSense(table))))
            addRowNames(table, attempt);
        else if (agrees != Agreement::Agrees)
            return noteDisagreement(table, score), std::nullopt;
        TableFormat& format = table.format();
        if (const size_t most = mostFields(format); most != anyFieldCount)
            table.dropLinesLongerThan(most); // their fields stand under other titles
        format.decimalComma = hasDecimalComma(table);
        format.firstDataLine = format.headerLine + 1;
        choose(table, attempt);
        return attempt;
    }

    bool makesSense(HeadTable& table) const {
        return std::holds_alternative<ColumnChoice>(chooseColumns(table, m_isWhole, m_options));
    }

    void choose(HeadTable& table, Attempt& attempt) const {
        auto choice = chooseColumns(table, m_isWhole, m_options);
        attempt.understanding.format = table.format();
        if (Refusal* const refusal = std::get_if<Refusal>(&choice)) {
            attempt.refusal = *refusal;
            return;
        }
        const QList<QString> remarks = attempt.understanding.columns.remarks;
        attempt.understanding.columns = std::get<ColumnChoice>(choice);
        attempt.understanding.columns.remarks = remarks + attempt.understanding.columns.remarks;
        if (table.body().isEmpty())
            attempt.refusal = noRows(table.format());
    }

    static void addRowNames(HeadTable& table, Attempt& attempt) {
        table.format().titles.prepend(QByteArray());
        attempt.understanding.columns.remarks += QStringLiteral(
            "The lines have one field more than the header: the first is taken for row names, as R "
            "writes them.");
    }

    void noteDisagreement(const HeadTable& table, int score) {
        if (score > 1 && m_disagreeingLine == 0 && !table.body().isEmpty())
            m_disagreeingLine = table.format().headerLine;
    }

    static Refusal noRows(const TableFormat& format) {
        return {RefusalCode::NotATable,
                QStringLiteral("The table has a header and no rows."),
                {},
                {},
                format.headerLine};
    }

    std::variant<Understanding, Refusal> result(const Attempt& attempt) const {
        if (!attempt.refusal)
            return attempt.understanding;
        Refusal refusal = *attempt.refusal;
        if (refusal.line == 0)
            refusal.line = attempt.understanding.format.headerLine;
        return refusal;
    }

    Refusal notATable() const {
        if (m_disagreeingLine > 0)
            return {
                RefusalCode::NotATable,
                QStringLiteral("Line %1 looks like a header, but the lines after it have another "
                               "number of fields.")
                    .arg(m_disagreeingLine),
                {},
                {},
                m_disagreeingLine};
        return withoutHeader();
    }

    Refusal withoutHeader() const {
        Refusal refusal{RefusalCode::NotATable,
                        QStringLiteral("No line looks like the header of a table of results."),
                        {},
                        {}};
        const std::optional<HeadTable> table = evenTable(bodyFrom(m_lines, 0));
        if (!table || !hasNumbers(table->fields(table->body().first())))
            return refusal;
        refusal.line = table->body().first().number;
        refusal.message +=
            QStringLiteral(" If it has none, say --no-header and give the columns by "
                           "number. Of the first line: %1.")
                .arg(numberedFields(*table));
        refusal.options = {"--no-header --chromosome N --position N --p N"};
        return refusal;
    }

    const QList<HeadLine>& m_lines;
    bool m_isWhole;
    const PrepareOptions& m_options;
    bool m_isQuoted = false;
    std::optional<Attempt> m_found, m_best;
    qint64 m_disagreeingLine = 0;
};

bool isPrepared(const QList<HeadLine>& lines) {
    if (lines.isEmpty())
        return false;
    const QList<QByteArray> titles = bytesOf(lines.first().text).split('\t');
    return titles.size() >= qsizetype(std::size(title_table::prepared)) &&
           std::equal(std::begin(title_table::prepared), std::end(title_table::prepared),
                      titles.begin(),
                      [](std::string_view a, const QByteArray& b) { return a == viewOf(b); });
}

RoleNote preparedNote(Role role, int column) {
    return {role, column, bytesOf(title_table::prepared[column]),
            QStringLiteral("the table is a prepared one")};
}

// Takes the columns of a prepared or saved table, whose labels the user may know better: the window
// saves every row with that of the file's first chromosome.
Understanding prepared(const QList<HeadLine>& lines,
                       const std::optional<QByteArray>& chromosomeValue) {
    Understanding understanding;
    TableFormat& format = understanding.format;
    format.headerLine = 1;
    format.firstDataLine = 2;
    format.hasComments = false; // prepare writes none, and a chromosome may be named #1
    format.titles = bytesOf(lines.first().text).split('\t');
    ColumnChoice& columns = understanding.columns;
    columns.isPrepared = true;
    columns.chromosome = chromosomeValue ? -1 : 0;
    columns.chromosomeValue = chromosomeValue.value_or(QByteArray());
    columns.position = 1;
    columns.p = 2;
    columns.logP = 3;
    columns.notes = {preparedNote(Role::Position, 1), preparedNote(Role::PValue, 2),
                     preparedNote(Role::LogP, 3)};
    if (!chromosomeValue)
        columns.notes.prepend(preparedNote(Role::Chromosome, 0));
    chooseName(HeadTable(format, {}), {}, columns);
    return understanding;
}

} // namespace

std::variant<Understanding, Refusal> findHeader(const QList<HeadLine>& lines, bool isWhole,
                                                const PrepareOptions& options) {
    if (isPrepared(lines) && !asksForMore(options))
        return prepared(lines, options.chromosomeValue);
    return HeaderSearch(lines, isWhole, options).search();
}

std::variant<Understanding, Refusal> readWithoutHeader(const QList<HeadLine>& lines, bool isWhole,
                                                       const PrepareOptions& options) {
    const QList<HeadLine> body = bodyFrom(lines, 0);
    std::optional<HeadTable> table = body.isEmpty() ? std::nullopt : evenTable(body);
    if (!table)
        return Refusal{RefusalCode::NotATable,
                       QStringLiteral("The first lines have different numbers of fields, whatever "
                                      "parts them."),
                       {},
                       {},
                       body.isEmpty() ? 0 : body.first().number};
    TableFormat& format = table->format();
    format.decimalComma = hasDecimalComma(*table);
    auto choice = chooseColumns(*table, isWhole, options);
    if (Refusal* const refusal = std::get_if<Refusal>(&choice))
        return *refusal;
    return Understanding{format, std::get<ColumnChoice>(choice)};
}
