#include "column_choice.h"

#include "body_agreement.h"
#include "candidates.h"
#include "column_option.h"
#include "p_columns.h"
#include "p_value.h"
#include "place_columns.h"
#include "position_text.h"
#include "role_titles.h"
#include "title_table.h"
#include "titles.h"
#include "value_judge.h"
#include "vcf_field.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace {

using Optional = std::optional<Refusal>;

struct ColumnOption {
    const char* option;
    const std::optional<QByteArray>& text;
    int NamedColumns::*column;
};

Optional readColumnOptions(const HeadTable& table, const PrepareOptions& options,
                           NamedColumns& named) {
    const ColumnOption all[] = {
        {"--chromosome", options.chromosome, &NamedColumns::chromosome},
        {"--position", options.position, &NamedColumns::position},
        {"--p", options.p, &NamedColumns::p},
        {"--name", options.name, &NamedColumns::name},
        {"--test", options.test, &NamedColumns::test},
        {"--z", options.z, &NamedColumns::z},
        {"--beta", options.beta, &NamedColumns::beta},
        {"--se", options.standardError, &NamedColumns::standardError},
        {"--sample", options.sample, &NamedColumns::sample},
    };
    for (const ColumnOption& one : all) {
        auto column = columnOf(one.option, one.text, table.titles(), table.columnCount());
        if (Refusal* const refusal = std::get_if<Refusal>(&column))
            return *refusal;
        named.*one.column = std::get<int>(column);
    }
    return std::nullopt;
}

Optional checkWhere(const HeadTable& table, const PrepareOptions& options) {
    for (const auto& [title, value] : options.where) {
        auto column = whereColumn(title, table.titles(), table.columnCount());
        if (Refusal* const refusal = std::get_if<Refusal>(&column))
            return *refusal;
    }
    return std::nullopt;
}

bool isVcf(const QList<QByteArray>& titles) {
    return titles.size() > qsizetype(std::size(title_table::vcf)) &&
           std::equal(std::begin(title_table::vcf), std::end(title_table::vcf), titles.begin(),
                      [](std::string_view a, const QByteArray& b) { return a == viewOf(b); });
}

// The samples' columns of a VCF, and what to do where it holds no -log10 p.
class VcfChooser {
public:
    VcfChooser(const HeadTable& table, ColumnChoice& choice) : m_table(table), m_choice(choice) {}

    Optional choose(int namedSample) {
        const int first = int(std::size(title_table::vcf));
        const int sample = namedSample >= 0 ? namedSample : first;
        if (namedSample < 0 && m_table.titles().size() > first + 1)
            return severalSamples(first);
        if (!hasLogP(first - 1))
            return Refusal{RefusalCode::NoPValue,
                           QStringLiteral("This VCF holds no p-values: its FORMAT has no LP."),
                           {},
                           {}};
        m_choice.format = first - 1;
        m_choice.logP = sample;
        m_choice.notes += {Role::LogP, sample, m_table.titles()[sample],
                           QStringLiteral("the sample's LP, which is -log10 p")};
        return std::nullopt;
    }

private:
    bool hasLogP(int format) const {
        const QList<QByteArray> texts = m_table.column(format, m_table.body().size());
        return std::any_of(texts.begin(), texts.end(), [](const QByteArray& text) {
            return text.split(':').contains(bytesOf(title_table::vcfLogP));
        });
    }

    Refusal severalSamples(int first) const {
        Refusal refusal{
            RefusalCode::SeveralSamples,
            QStringLiteral("The VCF has several samples. Say which to take with --sample."),
            m_table.titles().mid(first),
            {}};
        for (int column = first; column < m_table.titles().size(); ++column)
            refusal.options += optionFor("--sample", m_table.titles(), column);
        return refusal;
    }

    const HeadTable& m_table;
    ColumnChoice& m_choice;
};

bool isTaken(int column, const ColumnChoice& choice) {
    return QList<int>{choice.chromosome, choice.position, choice.joined, choice.p,
                      choice.logP,       choice.name,     choice.test}
        .contains(column);
}

template <typename List>
QList<int> columnsIn(const List& list, const QList<QByteArray>& titles) {
    QList<int> columns;
    for (const std::string_view entry : list)
        for (int column = 0; column < titles.size(); ++column)
            if (normalTitle(viewOf(titles[column])) == bytesOf(entry))
                columns += column;
    return columns;
}

Optional chooseTest(const HeadTable& table, const NamedColumns& named,
                    const PrepareOptions& options, ColumnChoice& choice) {
    const QList<int> columns = columnsIn(title_table::tests, table.titles());
    choice.test = named.test >= 0 ? named.test : columns.value(0, -1);
    if (choice.test < 0 && options.testName)
        return Refusal{
            RefusalCode::UnknownColumn,
            QStringLiteral("No column says which test a line is of, so that none is of %1.")
                .arg(QString::fromUtf8(*options.testName)),
            {},
            {}};
    if (choice.test >= 0)
        choice.notes += {Role::Test, choice.test, table.titles().value(choice.test),
                         QStringLiteral("says which test a line is of")};
    return std::nullopt;
}

void chooseTraits(const HeadTable& table, ColumnChoice& choice) {
    for (const int column : columnsIn(title_table::traits, table.titles()))
        if (!isTaken(column, choice)) {
            choice.traits += column;
            choice.notes += {Role::Trait, column, table.titles()[column],
                             QStringLiteral("may say which trait a line is of")};
        }
    const QList<int> info =
        columnsIn(std::initializer_list<std::string_view>{"info"}, table.titles());
    if (!info.isEmpty() && choice.format < 0 &&
        table.column(info.first(), 100).join(';').contains("LOG10P="))
        choice.info = info.first();
}

// Without a place of its own, a line is looked up by its marker's name.
Optional needName(const ColumnChoice& choice) {
    if (choice.position >= 0 || choice.joined >= 0 || choice.name >= 0)
        return std::nullopt;
    return Refusal{
        RefusalCode::NoPosition,
        QStringLiteral("No title of the table says a marker's name, by which --positions "
                       "would look it up. Name the column with --name."),
        {},
        {"--name COLUMN"}};
}

// Counts what the first lines hold in the chosen columns.
class HeadCounter {
public:
    HeadCounter(const HeadTable& table, const Understanding& understanding)
        : m_table(table), m_columns(understanding.columns) {}

    ValueCounts count(bool isWhole) {
        std::unordered_set<std::string_view> labels;
        for (qsizetype i = 0; i < m_table.body().size(); ++i) {
            m_row = m_table.row(i);
            if (isHeader())
                continue;
            countPosition(field(m_columns.position));
            countValues(m_table.body()[i].number);
            if (const std::string_view label = field(m_columns.chromosome); !isMissing(label)) {
                ++m_counts.chromosomeRows;
                labels.insert(label);
            }
        }
        if (isWhole)
            m_counts.labels = std::ssize(labels);
        return m_counts;
    }

private:
    // Empty where the line is too short, or there is no such column.
    std::string_view field(int column) const {
        const auto place = static_cast<size_t>(column);
        return column >= 0 && place < m_row.size() ? m_row[place] : std::string_view();
    }

    bool isHeader() const {
        const QList<QByteArray>& titles = m_table.titles();
        return std::equal(
            m_row.begin(), m_row.end(), titles.begin(), titles.end(),
            [](std::string_view text, const QByteArray& title) { return text == viewOf(title); });
    }

    void countPosition(std::string_view text) {
        int position = 0;
        const PositionKind kind = readPosition(text, m_table.format(), position);
        m_counts.positions += kind == PositionKind::Missing ? 0 : 1;
        m_counts.positionsFractional += kind == PositionKind::Fractional ? 1 : 0;
        m_counts.positionTexts += kind == PositionKind::NotANumber ? 1 : 0;
    }

    std::string_view logText() const {
        const std::string_view text = field(m_columns.logP);
        return m_columns.format < 0
                   ? text
                   : vcfSubfield(field(m_columns.format), text, title_table::vcfLogP);
    }

    void countValues(qint64 line) {
        const bool isComma = m_table.format().decimalComma;
        const std::string_view pText = field(m_columns.p), log = logText();
        const PValue p = readPValue(pText, isComma);
        double value = 0.0;
        const bool hasLog = readNumber(log, isComma, value);
        const bool hasP = p.kind == PValue::Kind::Number;
        if (hasP)
            m_counts.countP(p.p, p.isNegative, p.negLog10);
        if (hasLog)
            m_counts.countLog(value);
        m_counts.rows += hasP || hasLog ? 1 : 0;
        m_counts.pTexts += p.kind == PValue::Kind::NotANumber ? 1 : 0;
        m_counts.logTexts += !hasLog && !isMissing(log) ? 1 : 0;
        if (hasP && hasLog && !p.isBound && !p.isNegative)
            m_counts.countPair(p.p, p.negLog10, negLog10Of(value, m_columns.logScale), line,
                               QString::fromUtf8(bytesOf(pText) + " and " + bytesOf(log)));
    }

    const HeadTable& m_table;
    const ColumnChoice& m_columns;
    std::span<const std::string_view> m_row;
    ValueCounts m_counts;
};

// The steps of choosing, each of which may refuse.
Optional choose(const HeadTable& table, const PrepareOptions& options, ColumnChoice& choice) {
    NamedColumns named;
    if (Optional refusal = readColumnOptions(table, options, named))
        return refusal;
    choice.isChromosomeNamed = named.chromosome >= 0;
    if (Optional refusal = checkWhere(table, options))
        return refusal;
    if (Optional refusal = choosePlace(table, named, options, choice))
        return refusal;
    const bool isOfVcf = isVcf(table.titles());
    if (named.sample >= 0 && !isOfVcf)
        return Refusal{RefusalCode::UnknownColumn,
                       QStringLiteral("The table is no VCF, so --sample has nothing to choose."),
                       {},
                       {}};
    const bool readsVcf = isOfVcf && named.p < 0;
    if (Optional refusal = readsVcf ? VcfChooser(table, choice).choose(named.sample)
                                    : choosePValue(table, named, options, choice))
        return refusal;
    chooseName(table, named, choice);
    if (Optional refusal = needName(choice))
        return refusal;
    if (Optional refusal = chooseTest(table, named, options, choice))
        return refusal;
    chooseTraits(table, choice);
    return std::nullopt;
}

// Whether the table has a column of decimal commas, but its numbers have decimal points.
bool isCommaInTexts(const HeadTable& table, const ColumnChoice& columns) {
    if (!table.format().decimalComma || table.format().separator == Separator::Semicolon)
        return false;
    return !agreesWithDecimalComma(table,
                                   where(QList<int>{columns.position, columns.p, columns.logP,
                                                    columns.z, columns.beta, columns.standardError},
                                         [](int column) { return column >= 0; }));
}

} // namespace

std::variant<ColumnChoice, Refusal> chooseColumns(HeadTable& table, bool isWhole,
                                                  const PrepareOptions& options) {
    ColumnChoice columns;
    if (Optional refusal = choose(table, options, columns))
        return *refusal;
    if (isCommaInTexts(table, columns)) {
        table.format().decimalComma = false;
        columns = {};
        if (Optional refusal = choose(table, options, columns))
            return *refusal;
    }
    Understanding understanding{table.format(), columns};
    const ValueCounts counts = HeadCounter(table, understanding).count(isWhole);
    if (Optional refusal = judge(counts, understanding))
        return *refusal;
    if (table.format().decimalComma && table.format().separator != Separator::Semicolon)
        understanding.columns.remarks +=
            QStringLiteral("A column has decimal commas throughout: a comma is taken for the "
                           "decimal point.");
    return understanding.columns;
}
