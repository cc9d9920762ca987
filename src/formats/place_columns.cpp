#include "place_columns.h"

#include "candidates.h"
#include "column_option.h"
#include "p_value.h"
#include "place_title.h"
#include "position_text.h"
#include "title_table.h"
#include "titles.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace {

constexpr qsizetype joinedRows = 10'000;
constexpr int joinedPercent = 99;

struct PlaceCandidate {
    int column = 0;
    PlaceColumnTitle title;
};
using PlaceCandidates = QList<PlaceCandidate>;

QString raw(const HeadTable& table, int column) {
    return columnText(table.titles(), column);
}

RoleNote note(Role role, const HeadTable& table, int column, const QString& why) {
    return {role, column, table.titles().value(column), why};
}

// Looks for the pair of columns, family by family.
class PlaceChooser {
public:
    PlaceChooser(const HeadTable& table, const NamedColumns& named, const PrepareOptions& options,
                 ColumnChoice& choice)
        : m_table(table), m_named(named), m_options(options), m_choice(choice) {}

    std::optional<Refusal> choose() {
        findCandidates();
        if (m_named.position >= 0 && looksJoined(m_named.position))
            return takeJoined(m_named.position, QStringLiteral("named by --position"));
        for (const int family : familyOrder())
            if (isAllowed(family) && chooseIn(family))
                return m_refusal ? m_refusal : finish(family);
        if (const std::optional<int> joined = joinedColumn())
            return m_refusal ? m_refusal
                             : takeJoined(*joined, QStringLiteral("its values hold both"));
        if (!m_options.positionsFile.isEmpty())
            return std::nullopt;
        return missing();
    }

private:
    // Any column with a fitting title; a position whose values are no positions is none.
    void findCandidates() {
        for (int column = 0; column < m_table.titles().size(); ++column) {
            const auto title = readPlaceTitle(viewOf(m_table.titles()[column]));
            if (title && (title->isChromosome || mayBePositions(column)))
                (title->isChromosome ? m_chromosomes : m_positions).append({column, *title});
        }
    }

    // A table of positions is asked instead of a column that is empty or holds a genetic map.
    bool mayBePositions(int column) {
        if (looksJoined(column))
            return false;
        if (m_options.positionsFile.isEmpty() || holdsPlaces(column))
            return true;
        if (column != m_named.position)
            m_choice.remarks += raw(m_table, column) +
                                QStringLiteral(" holds no positions in base pairs: --positions "
                                               "gives them, unless another column does.");
        return false;
    }

    bool holdsPlaces(int column) const {
        const QList<QByteArray> values = m_table.values(column, joinedRows);
        qsizetype places = 0, fractions = 0;
        for (const QByteArray& value : values) {
            int position = 0;
            const PositionKind kind = readPosition(viewOf(value), m_table.format(), position);
            places += kind == PositionKind::Whole && position > 0 ? 1 : 0;
            fractions += kind == PositionKind::Fractional ? 1 : 0;
        }
        return places > 0 && fractions * 100 <= values.size();
    }

    bool looksJoined(int column) const {
        return areJoinedIds(m_table.values(column, joinedRows), 51);
    }

    static int familyOf(const PlaceCandidates& candidates, int column) {
        for (const PlaceCandidate& candidate : candidates)
            if (candidate.column == column)
                return candidate.title.family;
        return -1;
    }

    // Beside a column that the user named, plain titles come first.
    QList<int> familyOrder() const {
        QList<int> order(std::size(title_table::families));
        std::iota(order.begin(), order.end(), 0);
        if (m_named.chromosome >= 0 || m_named.position >= 0)
            order.move(title_table::plainFamily, 0);
        return order;
    }

    bool isAllowed(int family) const {
        const int byChromosome = familyOf(m_chromosomes, m_named.chromosome);
        const int byPosition = familyOf(m_positions, m_named.position);
        if (m_named.chromosome >= 0 && m_named.position >= 0)
            return true;
        if (byChromosome >= 0 || byPosition >= 0)
            return family == std::max(byChromosome, byPosition);
        return family != title_table::harmonisedFamily || !m_options.authorBuild;
    }

    // False where the family lacks one of both.
    bool chooseIn(int family) {
        const auto isIn = [&](const PlaceCandidate& candidate) {
            return candidate.title.family == family;
        };
        const PlaceCandidates chromosomes = where(m_chromosomes, isIn);
        const PlaceCandidates positions = where(m_positions, isIn);
        const bool hasChromosome = m_named.chromosome >= 0 || m_options.chromosomeValue.has_value();
        if ((!hasChromosome && chromosomes.isEmpty()) ||
            (m_named.position < 0 && positions.isEmpty()))
            return false;
        m_choice.position = m_named.position >= 0 ? m_named.position : bestPosition(positions);
        if (m_options.chromosomeValue)
            m_choice.chromosomeValue = *m_options.chromosomeValue;
        else
            m_choice.chromosome =
                m_named.chromosome >= 0 ? m_named.chromosome : bestChromosome(chromosomes);
        return true;
    }

    static PlaceCandidates ofBestRank(const PlaceCandidates& candidates) {
        const auto best = std::min_element(
            candidates.begin(), candidates.end(),
            [](const auto& a, const auto& b) { return a.title.rank < b.title.rank; });
        return where(candidates, [&](const PlaceCandidate& candidate) {
            return candidate.title.rank == best->title.rank;
        });
    }

    // Leftmost, of those that name no build if there are any.
    int bestPosition(const PlaceCandidates& candidates) {
        PlaceCandidates best =
            where(candidates, [](const auto& c) { return !c.title.isZeroBased; });
        best = ofBestRank(best.isEmpty() ? candidates : best);
        const PlaceCandidates plain =
            where(best, [](const auto& c) { return c.title.build.isEmpty(); });
        if (plain.isEmpty())
            askForBuild(best);
        for (const PlaceCandidate& other : plain)
            if (differ(plain.first().column, other.column))
                m_refusal = severalBuilds(plain);
        return (plain.isEmpty() ? best : plain).first().column;
    }

    // Whether two columns have other positions on more than 1 in 100 lines.
    bool differ(int a, int b) const {
        if (a == b)
            return false;
        const QList<QByteArray> first = m_table.column(a, joinedRows);
        const QList<QByteArray> second = m_table.column(b, joinedRows);
        qsizetype rows = 0, differing = 0;
        for (qsizetype i = 0; i < first.size(); ++i) {
            int x = 0, y = 0;
            if (readPosition(viewOf(first[i]), m_table.format(), x) != PositionKind::Whole ||
                readPosition(viewOf(second[i]), m_table.format(), y) != PositionKind::Whole)
                continue;
            ++rows;
            differing += x == y ? 0 : 1;
        }
        return differing * 100 > rows;
    }

    // Leftmost, of those of the position's build if there are any.
    int bestChromosome(const PlaceCandidates& candidates) const {
        const QByteArray build =
            placeTitle(viewOf(m_table.titles().value(m_choice.position))).build;
        const PlaceCandidates same =
            where(candidates, [&](const auto& c) { return c.title.build == build; });
        if (same.isEmpty())
            return ofBestRank(candidates).first().column;
        return ofBestRank(same).first().column;
    }

    void askForBuild(const PlaceCandidates& candidates) {
        const bool isAnyOther =
            std::any_of(candidates.begin(), candidates.end(), [&](const auto& c) {
                return c.title.build != candidates.first().title.build;
            });
        if (isAnyOther)
            m_refusal = severalBuilds(candidates);
    }

    QString textOf(const PlaceCandidates& candidates) const {
        QStringList texts;
        for (const PlaceCandidate& candidate : candidates)
            texts += raw(m_table, candidate.column);
        return texts.join(QStringLiteral(", "));
    }

    Refusal severalBuilds(const PlaceCandidates& candidates) const {
        Refusal refusal{
            RefusalCode::SeveralBuilds,
            QStringLiteral("The table has several columns of positions, such as those of several "
                           "genome builds: %1. Say which to take with --position.")
                .arg(textOf(candidates)),
            {},
            {}};
        for (const PlaceCandidate& candidate : candidates) {
            refusal.candidates += m_table.titles()[candidate.column];
            refusal.options += optionFor("--position", m_table.titles(), candidate.column);
        }
        return refusal;
    }

    bool isStart(int column) const {
        const auto title = placeTitle(viewOf(m_table.titles().value(column))).title;
        return contains(title_table::starts, viewOf(title));
    }

    // Most lines have an end that is the start + 1.
    bool endsOneLater(int start, int end) const {
        const QList<QByteArray> starts = m_table.column(start, joinedRows);
        const QList<QByteArray> ends = m_table.column(end, joinedRows);
        int rows = 0, oneLater = 0;
        for (qsizetype i = 0; i < starts.size(); ++i) {
            int from = 0, to = 0;
            if (readPosition(viewOf(starts[i]), m_table.format(), from) != PositionKind::Whole ||
                readPosition(viewOf(ends[i]), m_table.format(), to) != PositionKind::Whole)
                continue;
            ++rows;
            oneLater += qint64{to} - from == 1 ? 1 : 0;
        }
        return oneLater * 2 > rows;
    }

    bool isZeroBased(int column) const {
        const auto title = readPlaceTitle(viewOf(m_table.titles().value(column)));
        if (title && title->isZeroBased)
            return true;
        if (m_named.position >= 0) // the user has looked
            return false;
        for (int end = 0; isStart(column) && end < m_table.titles().size(); ++end)
            if (contains(title_table::ends,
                         viewOf(placeTitle(viewOf(m_table.titles()[end])).title)) &&
                endsOneLater(column, end))
                return true;
        return false;
    }

    std::optional<Refusal> finish(int family) {
        if (!m_options.positionsFile.isEmpty())
            m_choice.remarks +=
                QStringLiteral("The table has positions of its own; --positions is not "
                               "needed and not used.");
        if (!m_options.zeroBased && isZeroBased(m_choice.position))
            return zeroBased();
        noteRole(Role::Chromosome, m_choice.chromosome, m_named.chromosome, "--chromosome");
        noteRole(Role::Position, m_choice.position, m_named.position, "--position");
        remarkTwins();
        noteOthers(Role::Chromosome, m_chromosomes, m_choice.chromosome);
        noteOthers(Role::Position, m_positions, m_choice.position);
        if (family == title_table::harmonisedFamily &&
            familyOf(m_positions, m_choice.position) == family)
            m_choice.remarks += QStringLiteral(
                "Chromosome and position are the harmonised ones; rows without them are dropped. "
                "--build author takes the author's.");
        return std::nullopt;
    }

    Refusal zeroBased() const {
        return {
            RefusalCode::ZeroBased,
            QStringLiteral("The positions in %1 look like those of a BED file, which are counted "
                           "from 0. Say --zero-based if so, else name the column.")
                .arg(raw(m_table, m_choice.position)),
            {m_table.titles()[m_choice.position]},
            {"--zero-based"}};
    }

    void noteRole(Role role, int column, int named, const char* option) {
        if (column < 0)
            return;
        const auto title = readPlaceTitle(viewOf(m_table.titles().value(column)));
        QString why = QStringLiteral("its title says so");
        if (named >= 0)
            why = QStringLiteral("named by %1").arg(QLatin1String(option));
        else if (title && title->rank > 0)
            why = QStringLiteral("no other title says it better");
        m_choice.notes += note(role, m_table, column, why);
    }

    // Another position column that is as good by its title may hold another build.
    void remarkTwins() {
        if (m_named.position >= 0 || m_choice.position < 0)
            return;
        const auto chosen = readPlaceTitle(viewOf(m_table.titles()[m_choice.position]));
        for (const PlaceCandidate& other : m_positions)
            if (other.column != m_choice.position && other.title.family == chosen->family &&
                other.title.rank == chosen->rank)
                m_choice.remarks += QStringLiteral("%1 says a position too; the leftmost is taken. "
                                                   "--position decides.")
                                        .arg(raw(m_table, other.column));
    }

    void noteOthers(Role role, const PlaceCandidates& candidates, int chosen) {
        const int family = familyOf(candidates, chosen);
        for (const PlaceCandidate& other : candidates)
            if (other.column != chosen)
                m_choice.others +=
                    note(role, m_table, other.column,
                         other.title.family == family ? QStringLiteral("another column comes first")
                                                      : QStringLiteral("belongs to other columns"));
    }

    struct Joined {
        int order;
        int column;
    };

    QList<Joined> joinedCandidates() const {
        QList<Joined> joined;
        for (int column = 0; column < m_table.titles().size(); ++column) {
            const QByteArray& title = m_table.titles()[column];
            if (column == m_named.name)
                joined.append({-1, column});
            else if (const std::optional<int> order = joinedOrder(viewOf(title)))
                joined.append({*order, column});
            else if (const auto place = readPlaceTitle(viewOf(title));
                     place && !place->isChromosome)
                joined.append({int(std::size(title_table::joinedTitles)), column});
        }
        std::stable_sort(joined.begin(), joined.end(),
                         [](const Joined& a, const Joined& b) { return a.order < b.order; });
        return joined;
    }

    // The first column whose values are joined ids; refuses where others differ in the build alone.
    std::optional<int> joinedColumn() {
        PlaceCandidates accepted;
        for (const Joined& joined : joinedCandidates())
            if (areJoinedIds(m_table.values(joined.column, joinedRows), joinedPercent)) {
                const PlaceTitle title = placeTitle(viewOf(m_table.titles()[joined.column]));
                accepted.append({joined.column, {false, 0, 0, title.build, title.title}});
            }
        if (accepted.isEmpty())
            return std::nullopt;
        const PlaceCandidate& first = accepted.first();
        if (first.column != m_named.name)
            askForBuild(
                where(accepted, [&](const auto& c) { return c.title.stem == first.title.stem; }));
        return first.column;
    }

    std::optional<Refusal> takeJoined(int column, const QString& why) {
        m_choice.joined = column;
        m_choice.notes += note(Role::Joined, m_table, column, why);
        for (const PlaceCandidates& candidates : {m_chromosomes, m_positions})
            for (const PlaceCandidate& other : candidates)
                m_choice.others += note(
                    other.title.isChromosome ? Role::Chromosome : Role::Position, m_table,
                    other.column, QStringLiteral("has no counterpart; both are in another column"));
        return std::nullopt;
    }

    Refusal missing() const {
        const bool lacksChromosome = m_named.chromosome < 0 && m_chromosomes.isEmpty() &&
                                     !m_options.chromosomeValue.has_value();
        const bool lacksPosition = m_named.position < 0 && m_positions.isEmpty();
        if (m_table.titles().isEmpty() && lacksChromosome && lacksPosition)
            return {RefusalCode::NoChromosome,
                    QStringLiteral("There are no titles. Give the columns of chromosome, position "
                                   "and p by number."),
                    {},
                    {"--chromosome N --position N --p N"}};
        Refusal refusal{
            lacksChromosome ? RefusalCode::NoChromosome : RefusalCode::NoPosition, {}, {}, {}};
        const QString what = lacksChromosome && lacksPosition
                                 ? QStringLiteral("neither chromosomes nor positions")
                             : lacksChromosome ? QStringLiteral("no chromosomes")
                             : lacksPosition   ? QStringLiteral("no positions")
                                               : QStringLiteral("no chromosomes and positions that "
                                                                  "belong together");
        refusal.message =
            QStringLiteral(
                "The titles say %1, and no marker names hold both. Name the columns with "
                "--chromosome and --position, or give a table of positions by marker "
                "name with --positions FILE.")
                .arg(what);
        if (lacksChromosome && !lacksPosition)
            refusal.message += QStringLiteral(" For a table of one chromosome, say "
                                              "--chromosome-value NAME.");
        for (const PlaceCandidate& candidate : m_chromosomes + m_positions)
            refusal.candidates += m_table.titles()[candidate.column];
        if (lacksChromosome == lacksPosition)
            refusal.options = {"--chromosome COLUMN --position COLUMN"};
        else if (lacksChromosome)
            refusal.options = {"--chromosome COLUMN", "--chromosome-value NAME"};
        else
            refusal.options = {"--position COLUMN"};
        refusal.options += "--positions FILE";
        return refusal;
    }

    const HeadTable& m_table;
    const NamedColumns& m_named;
    const PrepareOptions& m_options;
    ColumnChoice& m_choice;
    PlaceCandidates m_chromosomes, m_positions;
    std::optional<Refusal> m_refusal;
};

} // namespace

std::optional<Refusal> choosePlace(const HeadTable& table, const NamedColumns& named,
                                   const PrepareOptions& options, ColumnChoice& choice) {
    return PlaceChooser(table, named, options, choice).choose();
}
