#include "p_columns.h"

#include "candidates.h"
#include "column_option.h"
#include "p_title.h"
#include "p_value.h"
#include "place_title.h"
#include "title_table.h"
#include "titles.h"
#include "value_judge.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr qsizetype comparedRows = 1'000;

struct Candidate {
    int column = 0;
    PTitle title;
};
using Candidates = QList<Candidate>;

bool isNever(const Candidate& candidate) {
    return candidate.title.tier == PTitle::Tier::Never;
}

std::pair<PTitle::Tier, int> groupOf(const Candidate& candidate) {
    return {candidate.title.tier, candidate.title.rank};
}

// Chooses among the titles that say p.
class PChooser {
public:
    PChooser(const HeadTable& table, const NamedColumns& named, ColumnChoice& choice)
        : m_table(table), m_titles(table.titles()), m_named(named), m_choice(choice) {}

    std::optional<Refusal> choose() {
        findCandidates();
        if (m_named.p >= 0)
            takeNamed();
        else if (std::optional<Refusal> refusal = chooseGroup())
            return refusal;
        noteOthers();
        return std::nullopt;
    }

private:
    void findCandidates() {
        for (int column = 0; column < m_titles.size(); ++column)
            if (const std::optional<PTitle> title = readPTitle(viewOf(m_titles[column])))
                m_candidates.append({column, *title});
    }

    void takeNamed() {
        const auto it = std::find_if(m_candidates.begin(), m_candidates.end(),
                                     [&](const auto& c) { return c.column == m_named.p; });
        const bool isLog = it != m_candidates.end() && it->title.isLog;
        (isLog ? m_choice.logP : m_choice.p) = m_named.p;
        noteRole(m_named.p, isLog, QStringLiteral("named by --p"));
        if (it != m_candidates.end() && !isLog)
            pairWithLog(it->title);
    }

    // A single logarithm with the same words as the named p column.
    void pairWithLog(const PTitle& title) {
        const Candidates logs = where(m_candidates, [&](const Candidate& c) {
            return c.title.isLog && c.title.words == title.words && !isNever(c);
        });
        if (logs.size() == 1)
            take(logs.first(), QStringLiteral("the logarithm that goes with it"));
    }

    std::optional<Refusal> chooseGroup() {
        const Candidates usable = where(m_candidates, [](const auto& c) { return !isNever(c); });
        if (usable.isEmpty())
            return noPValue();
        const auto best = std::min_element(
            usable.begin(), usable.end(), [](auto& a, auto& b) { return groupOf(a) < groupOf(b); });
        const Candidates group =
            where(usable, [&](auto& c) { return groupOf(c) == groupOf(*best); });
        const Candidates numbers = where(group, [&](auto& c) { return holdsNumbers(c.column); });
        if (best->title.tier != PTitle::Tier::Primary || best->title.rank > 1)
            if (const QList<int> glued = gluedTitles(); !glued.isEmpty())
                return severalPValues(group,
                                      QStringLiteral("so may %1 by its values")
                                          .arg(columnText(m_titles, glued.first())),
                                      glued);
        return chooseIn(numbers.isEmpty() ? group : numbers);
    }

    // Titles such as metaP, whose values may be those of p, weigh against one that says sexdiff_p.
    QList<int> gluedTitles() const {
        QList<int> columns;
        for (int column = 0; column < m_titles.size(); ++column) {
            const QByteArray title = bareTitle(viewOf(m_titles[column]));
            const char before = title.size() > 1 ? title[title.size() - 2] : ' ';
            if (title.endsWith('P') && before >= 'a' && before <= 'z' &&
                !readPTitle(viewOf(title)) &&
                readPTitle(viewOf(title.chopped(1) + "_p"))->tier != PTitle::Tier::Never &&
                areProbabilities(column))
                columns += column;
        }
        return columns;
    }

    // A column like pval_origin says something about p.
    bool holdsNumbers(int column) const {
        const QList<QByteArray> values = m_table.values(column, comparedRows);
        const auto texts = std::count_if(values.begin(), values.end(), [&](const auto& text) {
            return readPValue(viewOf(text), m_table.format().decimalComma).kind ==
                   PValue::Kind::NotANumber;
        });
        return texts * 2 <= values.size();
    }

    std::optional<Refusal> chooseIn(const Candidates& group) {
        const Candidate& first = group.first();
        const auto isSame = [&](const Candidate& c) { return c.title.words == first.title.words; };
        const Candidates same = where(group, isSame);
        if (same.size() < group.size() && first.title.rank != 1)
            return severalPValues(group, QStringLiteral("no title is better than the others"));
        const Candidates ps = where(same, [](const auto& c) { return !c.title.isLog; });
        const Candidates logs = where(same, [](const auto& c) { return c.title.isLog; });
        if (!areEqual(ps) || !areEqual(logs))
            return severalPValues(same,
                                  QStringLiteral("the titles say the same, the values differ"));
        takePair(ps, logs, reasonFor(group, same, ps.size() > 1 || logs.size() > 1));
        return std::nullopt;
    }

    void takePair(const Candidates& ps, const Candidates& logs, const QString& why) {
        if (!ps.isEmpty())
            take(ps.first(), why);
        if (!logs.isEmpty())
            take(logs.first(),
                 ps.isEmpty() ? why : QStringLiteral("the logarithm that goes with it"));
        if (!ps.isEmpty() && ps.first().title.tier == PTitle::Tier::Secondary)
            remarkSecondary(ps.first());
        else if (ps.isEmpty() && logs.first().title.tier == PTitle::Tier::Secondary)
            remarkSecondary(logs.first());
    }

    void take(const Candidate& candidate, const QString& why) {
        (candidate.title.isLog ? m_choice.logP : m_choice.p) = candidate.column;
        noteRole(candidate.column, candidate.title.isLog, why);
    }

    void noteRole(int column, bool isLog, const QString& why) {
        m_choice.notes += {isLog ? Role::LogP : Role::PValue, column, m_titles.value(column), why};
    }

    void remarkSecondary(const Candidate& candidate) {
        m_choice.remarks +=
            QStringLiteral("%1 is taken for want of a better one: its title says \"%2\".")
                .arg(columnText(m_titles, candidate.column),
                     QString::fromUtf8(candidate.title.reason));
    }

    QString reasonFor(const Candidates& group, const Candidates& same, bool hasTwins) {
        if (same.size() < group.size()) {
            m_choice.remarks += QStringLiteral("Several titles say p equally well; the leftmost is "
                                               "taken. Others: %1.")
                                    .arg(titlesBut(group, same));
            return QStringLiteral("leftmost of several equally good titles");
        }
        if (hasTwins) {
            m_choice.remarks += QStringLiteral("Columns with the same values: %1. The leftmost is "
                                               "taken.")
                                    .arg(titlesBut(same, {}));
            return QStringLiteral("leftmost of several with the same values");
        }
        return m_candidates.size() == 1 ? QStringLiteral("the only title that says p")
                                        : QStringLiteral("its title says p best");
    }

    QString titlesBut(const Candidates& candidates, const Candidates& without) const {
        QStringList texts;
        for (const Candidate& candidate : candidates)
            if (std::none_of(without.begin(), without.end(),
                             [&](const auto& c) { return c.column == candidate.column; }))
                texts += columnText(m_titles, candidate.column);
        return texts.join(QStringLiteral(", "));
    }

    bool areEqual(const Candidates& candidates) const {
        for (qsizetype i = 1; i < candidates.size(); ++i)
            if (!areEqual(candidates[0].column, candidates[i].column))
                return false;
        return true;
    }

    bool areEqual(int a, int b) const {
        const QList<QByteArray> first = m_table.column(a, comparedRows);
        const QList<QByteArray> second = m_table.column(b, comparedRows);
        return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                          [&](const auto& x, const auto& y) { return x == y || sameNumber(x, y); });
    }

    bool sameNumber(const QByteArray& a, const QByteArray& b) const {
        if (isMissing(viewOf(a)) || isMissing(viewOf(b)))
            return isMissing(viewOf(a)) && isMissing(viewOf(b));
        double x = 0.0, y = 0.0;
        const bool comma = m_table.format().decimalComma;
        return readNumber(viewOf(a), comma, x) && readNumber(viewOf(b), comma, y) && x == y;
    }

    Refusal severalPValues(const Candidates& candidates, const QString& why,
                           const QList<int>& others = {}) const {
        Refusal refusal{RefusalCode::SeveralPValues, {}, {}, {}};
        refusal.message =
            QStringLiteral("Several columns may be the p-value, and %1: %2. Say which "
                           "to take with --p.")
                .arg(why, titlesBut(candidates, {}));
        for (const Candidate& candidate : candidates)
            offer(refusal, candidate.column);
        for (const int column : others)
            offer(refusal, column);
        return refusal;
    }

    void offer(Refusal& refusal, int column) const {
        refusal.candidates += m_titles[column];
        refusal.options += optionFor("--p", m_titles, column);
    }

    // A title like PlinkP or pJ whose values may be p-values.
    bool mayBeP(int column) const {
        const QByteArray title = normalTitle(viewOf(m_titles[column]));
        const bool looksLikeIt = title.endsWith('p') ||
                                 (title.size() == 2 && title.startsWith('p')) ||
                                 title.contains("pval");
        return looksLikeIt && !readPlaceTitle(viewOf(title)) && areProbabilities(column);
    }

    bool areProbabilities(int column) const {
        const QList<QByteArray> values = m_table.values(column, comparedRows);
        return !values.isEmpty() &&
               std::all_of(values.begin(), values.end(), [&](const auto& text) {
                   double number = -1.0;
                   return readNumber(viewOf(text), m_table.format().decimalComma, number) &&
                          number >= 0.0 && number <= 1.0;
               });
    }

    bool hasEffects() const {
        return std::any_of(m_titles.begin(), m_titles.end(), [](const QByteArray& title) {
            const QByteArray normal = normalTitle(viewOf(title));
            return contains(title_table::zTitles, viewOf(normal)) ||
                   contains(title_table::errorTitles, viewOf(normal));
        });
    }

    Refusal noPValue() const {
        Refusal refusal{
            RefusalCode::NoPValue, QStringLiteral("No title of the table says p."), {}, {}};
        if (!m_candidates.isEmpty())
            refusal.message = QStringLiteral("The table has no p-value of association; these say "
                                             "something else: %1.")
                                  .arg(titlesBut(m_candidates, {}));
        for (int column = 0; column < m_titles.size(); ++column)
            if (readPTitle(viewOf(m_titles[column])) || mayBeP(column))
                offer(refusal, column);
        const bool isUnknown = refusal.candidates.isEmpty();
        if (isUnknown)
            refusal.options = {"--p COLUMN"};
        refusal.message += isUnknown ? QStringLiteral(" Name the column with --p.")
                                     : QStringLiteral(" If one is right, name it with --p.");
        if (hasEffects())
            refusal.message += QStringLiteral(" It can be computed from effects with --p-from z or "
                                              "--p-from beta,se.");
        return refusal;
    }

    void noteOthers() {
        for (const Candidate& candidate : m_candidates)
            if (candidate.column != m_choice.p && candidate.column != m_choice.logP)
                m_choice.others +=
                    {candidate.title.isLog ? Role::LogP : Role::PValue, candidate.column,
                     m_titles[candidate.column], whyNot(candidate)};
    }

    static QString whyNot(const Candidate& candidate) {
        const QString word = QString::fromUtf8(candidate.title.reason);
        if (isNever(candidate))
            return QStringLiteral("no p-value of association: its title says \"%1\"").arg(word);
        if (candidate.title.tier == PTitle::Tier::Secondary)
            return QStringLiteral("second best: its title says \"%1\"").arg(word);
        return QStringLiteral("another column comes first");
    }

    const HeadTable& m_table;
    const QList<QByteArray>& m_titles;
    const NamedColumns& m_named;
    ColumnChoice& m_choice;
    Candidates m_candidates;
};

// The named column, else the leftmost one with a title of the list.
template <typename List>
int effectColumn(int named, const List& list, const QList<QByteArray>& titles) {
    if (named >= 0)
        return named;
    for (int column = 0; column < titles.size(); ++column)
        if (contains(list, viewOf(normalTitle(viewOf(titles[column])))))
            return column;
    return -1;
}

Refusal noEffects(const char* what, const char* option) {
    return {RefusalCode::NoPValue,
            QStringLiteral("No title of the table says %1, which --p-from asks for. Name the "
                           "column with %2.")
                .arg(QLatin1String(what), QLatin1String(option)),
            {},
            {QByteArray(option) + " COLUMN"}};
}

std::optional<Refusal> chooseEffects(const QList<QByteArray>& titles, const NamedColumns& named,
                                     PSource source, ColumnChoice& choice) {
    const auto take = [&](Role role, int column) {
        choice.notes +=
            {role, column, titles.value(column), QStringLiteral("--p-from asks for it")};
    };
    if (source == PSource::Z) {
        choice.z = effectColumn(named.z, title_table::zTitles, titles);
        if (choice.z < 0)
            return noEffects("z", "--z");
        take(Role::Z, choice.z);
        return std::nullopt;
    }
    choice.beta = effectColumn(named.beta, title_table::betaTitles, titles);
    choice.standardError = effectColumn(named.standardError, title_table::errorTitles, titles);
    if (choice.beta < 0)
        return noEffects("beta", "--beta");
    if (choice.standardError < 0)
        return noEffects("standard error", "--se");
    take(Role::Beta, choice.beta);
    take(Role::StandardError, choice.standardError);
    return std::nullopt;
}

// What --p-is says holds for the column that would have been read as p, else for the logarithm.
void applyScale(PScale scale, ColumnChoice& choice) {
    const int column = choice.p >= 0 ? choice.p : choice.logP;
    choice.p = scale == PScale::P ? column : -1;
    choice.logP = scale == PScale::P ? -1 : column;
    choice.logScale = scale == PScale::P ? PScale::NegLog10 : scale;
}

// Logarithms at or below 0, under a title without a minus, are log10 p.
void readSigns(const HeadTable& table, ColumnChoice& choice) {
    const std::optional<PTitle> title = readPTitle(viewOf(table.titles().value(choice.logP)));
    const double rounding = std::log10(largestP);
    bool hasNegative = false;
    for (const QByteArray& text : table.values(choice.logP, table.body().size())) {
        double number = 0.0;
        if (!readNumber(viewOf(text), table.format().decimalComma, number))
            continue;
        if (number > rounding)
            return;
        hasNegative = hasNegative || number < -rounding;
    }
    if (!hasNegative || (title && title->saysMinus))
        return;
    choice.logScale = PScale::Log10;
    choice.remarks += QStringLiteral("The values of %1 are log10 p, at or below 0: their sign is "
                                     "turned.")
                          .arg(columnText(table.titles(), choice.logP));
}

} // namespace

std::optional<Refusal> choosePValue(const HeadTable& table, const NamedColumns& named,
                                    const PrepareOptions& options, ColumnChoice& choice) {
    if (options.pSource != PSource::Column)
        return chooseEffects(table.titles(), named, options.pSource, choice);
    if (std::optional<Refusal> refusal = PChooser(table, named, choice).choose())
        return refusal;
    if (options.pScale)
        applyScale(*options.pScale, choice);
    else if (choice.logP >= 0)
        readSigns(table, choice);
    return std::nullopt;
}
