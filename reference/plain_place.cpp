#include "plain_place.h"

#include "plain_layout.h"
#include "plain_p.h"
#include "plain_titles.h"
#include "title_table.h"

#include <QRegularExpression>
#include <QSet>
#include <algorithm>

namespace plain {

namespace {

struct Candidate {
    int column;
    int rank;
};

class PlaceChooser {
public:
    PlaceChooser(const Layout& layout, const QList<QStringList>& rows,
                 const PrepareOptions& options)
        : m_layout(layout), m_titles(layout.titles), m_rows(rows), m_options(options) {}

    void choose(Columns& columns, int chromosome, int position, int name) const {
        if (position >= 0 && isJoined(position, 51)) {
            columns.joined = position;
            return;
        }
        QList<const title_table::Family*> families;
        for (const auto& family : title_table::families)
            families << &family;
        if (chromosome >= 0 || position >= 0)
            families.move(title_table::plainFamily, 0);
        for (const auto* family : families) {
            const QList<Candidate> chromosomes = inFamily(*family, title_table::chromosomes);
            const QList<Candidate> positions = positionsIn(*family);
            const bool hasChromosome = chromosome >= 0 || m_options.chromosomeValue;
            if (!isAllowed(*family, chromosome, position) ||
                (!hasChromosome && chromosomes.isEmpty()) || (position < 0 && positions.isEmpty()))
                continue;
            columns.position = position >= 0 ? position : bestPosition(positions);
            if (!m_options.chromosomeValue)
                columns.chromosome =
                    chromosome >= 0 ? chromosome : bestChromosome(chromosomes, columns.position);
            return mustCountFrom1(columns.position, position >= 0);
        }
        columns.joined = joinedColumn(name);
        if (columns.joined < 0 && m_options.positionsFile.isEmpty())
            refusePlace(chromosome >= 0 || m_options.chromosomeValue);
    }

private:
    QStringList values(int column, qsizetype most) const {
        QStringList texts;
        for (const QStringList& row : m_rows.mid(0, most))
            if (!isMissing(row.value(column)))
                texts << row[column];
        return texts;
    }

    bool isJoined(int column, int percent) const {
        const QStringList texts = values(column, 10000);
        qsizetype fitting = 0;
        for (const QString& text : texts)
            if (joinedPlace(text))
                ++fitting;
        return !texts.isEmpty() && fitting * 100 >= texts.size() * percent;
    }

    // The columns whose titles are in the list, in a family.
    template <typename List>
    QList<Candidate> inFamily(const title_table::Family& family, const List& list) const {
        QList<Candidate> found;
        for (int i = 0; i < m_titles.size(); ++i)
            for (const auto& [title, rank] : list)
                if (isOfFamily(m_titles[i], family, title))
                    found << Candidate{i, rank};
        return found;
    }

    static bool isOfFamily(const QString& title, const title_table::Family& family,
                           std::string_view word) {
        if (word == title_table::exactPosition && family.suffix.empty() &&
            family.prefixes[0].empty())
            return normalTitle(title) == fromData(word);
        const QString place = placeTitle(title);
        if (!place.contains(fromData(word)))
            return false;
        for (const std::string_view prefix : family.prefixes) {
            if (prefix.empty() && prefix.data() != family.prefixes[0].data())
                continue;
            if (place == fromData(prefix) + fromData(word) + fromData(family.suffix))
                return true;
        }
        return false;
    }

    // Positions in a family, from 1 or from 0; those in joined ids are none.
    QList<Candidate> positionsIn(const title_table::Family& family) const {
        QList<Candidate> found = inFamily(family, title_table::positions);
        for (int i = 0; i < m_titles.size(); ++i)
            if (countsFrom0(i, family))
                found << Candidate{i, 2};
        found.removeIf([this](const Candidate& each) {
            return isJoined(each.column, 51) ||
                   (!m_options.positionsFile.isEmpty() && !holdsPositions(each.column));
        });
        std::stable_sort(found.begin(), found.end(),
                         [](const Candidate& a, const Candidate& b) { return a.rank < b.rank; });
        return found;
    }

    // With a table of positions, a column without any and one of a genetic map do not count.
    bool holdsPositions(int column) const {
        int positions = 0, fractions = 0, all = 0;
        for (const QStringList& row : m_rows.mid(0, 10000)) {
            if (isMissing(row.value(column)))
                continue;
            const Decimal number = positionIn(row, column);
            ++all;
            positions += isPosition(number) && number.value > 0 ? 1 : 0;
            fractions += number.isFinite && !number.isWhole() ? 1 : 0;
        }
        return positions > 0 && fractions * 100 <= all;
    }

    bool countsFrom0(int column, const title_table::Family& family) const {
        for (const std::string_view word : title_table::zeroBasedPositions)
            if (isOfFamily(m_titles[column], family, word))
                return true;
        return false;
    }

    // The best position: one that names no build, unless all do. Those that name none must hold the
    // same positions, the others must name the same build.
    int bestPosition(QList<Candidate> candidates) const {
        QList<int> plain;
        QSet<QString> builds;
        for (const Candidate& each : std::as_const(candidates)) {
            if (each.rank != candidates.first().rank)
                continue;
            const QString build = buildInTitle(m_titles[each.column]);
            if (build.isEmpty())
                plain << each.column;
            builds << build;
        }
        for (const int column : std::as_const(plain))
            if (holdOthers(plain.first(), column))
                throw Failure{RefusalCode::SeveralBuilds};
        if (plain.isEmpty() && builds.size() > 1)
            throw Failure{RefusalCode::SeveralBuilds};
        return plain.value(0, candidates.first().column);
    }

    Decimal positionIn(const QStringList& row, int column) const {
        return decimal(m_layout.wholeText(row.value(column)));
    }

    static bool isPosition(const Decimal& number) {
        return number.isWhole() && number.value <= 2147483647.0L;
    }

    // Whether two columns hold other positions on more than 1 in 100 rows.
    bool holdOthers(int a, int b) const {
        int all = 0, apart = 0;
        for (const QStringList& row : m_rows) {
            const Decimal x = positionIn(row, a), y = positionIn(row, b);
            if (!isPosition(x) || !isPosition(y))
                continue;
            ++all;
            apart += x.value != y.value ? 1 : 0;
        }
        return apart * 100 > all;
    }

    // The best chromosome: of the position's build, if there is one.
    int bestChromosome(QList<Candidate> candidates, int position) const {
        std::stable_sort(candidates.begin(), candidates.end(),
                         [](const Candidate& a, const Candidate& b) { return a.rank < b.rank; });
        const QString build = buildInTitle(m_titles.value(position));
        for (const Candidate& each : candidates)
            if (buildInTitle(m_titles[each.column]) == build)
                return each.column;
        return candidates.first().column;
    }

    // Where a named column is of a family, the other one must be of the same.
    bool isAllowed(const title_table::Family& family, int chromosome, int position) const {
        if (chromosome >= 0 && position >= 0)
            return true;
        const int column = std::max(chromosome, position);
        bool isOfOne = false, isOfThis = false;
        for (const auto& each : title_table::families) {
            const QList<Candidate> candidates =
                chromosome >= 0 ? inFamily(each, title_table::chromosomes) : positionsIn(each);
            for (const Candidate& candidate : candidates)
                if (candidate.column == column) {
                    isOfOne = true;
                    isOfThis |= &each == &family;
                }
        }
        if (isOfOne)
            return isOfThis;
        return !m_options.authorBuild ||
               &family != &title_table::families[title_table::harmonisedFamily];
    }

    void refusePlace(bool hasChromosome) const {
        for (const auto& family : title_table::families)
            hasChromosome |= !inFamily(family, title_table::chromosomes).isEmpty();
        throw Failure{hasChromosome ? RefusalCode::NoPosition : RefusalCode::NoChromosome};
    }

    void mustCountFrom1(int position, bool isNamed) const {
        if (m_options.zeroBased)
            return;
        for (const auto& family : title_table::families)
            if (position < m_titles.size() && countsFrom0(position, family))
                throw Failure{RefusalCode::ZeroBased};
        const QString title = placeTitle(m_titles.value(position));
        for (int i = 0; i < m_titles.size(); ++i)
            if (!isNamed && isIn(title_table::starts, title) &&
                isIn(title_table::ends, placeTitle(m_titles[i])) && areOneLater(i, position))
                throw Failure{RefusalCode::ZeroBased};
    }

    bool areOneLater(int end, int start) const {
        int all = 0, oneLater = 0;
        for (const QStringList& row : m_rows) {
            const Decimal from = positionIn(row, start), to = positionIn(row, end);
            if (!isPosition(from) || !isPosition(to))
                continue;
            ++all;
            oneLater += to.value == from.value + 1 ? 1 : 0;
        }
        return oneLater * 2 > all;
    }

    int joinedColumn(int name) const {
        QList<int> columns;
        for (int i = 0; i < m_titles.size(); ++i)
            columns << i;
        columns.removeIf([&](int column) { return orderOfJoined(column, name) < 0; });
        std::stable_sort(columns.begin(), columns.end(), [&](int a, int b) {
            return orderOfJoined(a, name) < orderOfJoined(b, name);
        });
        columns.removeIf([&](int column) { return !isJoined(column, 99); });
        if (columns.isEmpty())
            return -1;
        const QString& first = m_titles[columns.first()];
        for (const int column : std::as_const(columns))
            if (columns.first() != name && placeTitle(m_titles[column]) == placeTitle(first) &&
                buildInTitle(m_titles[column]) != buildInTitle(first))
                throw Failure{RefusalCode::SeveralBuilds};
        return columns.first();
    }

    // The named one first, then by the list; titles of positions last. -1 for others.
    int orderOfJoined(int column, int name) const {
        if (column == name)
            return 0;
        const QString title = placeTitle(m_titles[column]);
        int order = 0;
        for (const auto& entry : title_table::joinedTitles) {
            ++order;
            const QString wanted = fromData(entry.title);
            if (title == wanted || (entry.isPrefix && title.startsWith(wanted)))
                return order;
        }
        for (const auto& family : title_table::families)
            for (const auto& [word, rank] : title_table::positions)
                if (isOfFamily(m_titles[column], family, word))
                    return order + 1;
        return -1;
    }

    const Layout& m_layout;
    const QStringList& m_titles;
    const QList<QStringList>& m_rows;
    const PrepareOptions& m_options;
};

} // namespace

void choosePlace(const Layout& layout, const QList<QStringList>& rows,
                 const PrepareOptions& options, const NamedPlace& named, Columns& columns) {
    PlaceChooser(layout, rows, options)
        .choose(columns, named.chromosome, named.position, named.name);
}

std::optional<std::pair<QString, QString>> joinedPlace(const QString& text) {
    static const QRegularExpression form(
        "^((?:chr)?(?:\\d{1,2}[A-DLR]?|X|Y|Z|W|XY|M|MT)|chr.+?|NC_\\d+(?:\\.\\d+)?)"
        "[:_-](\\d+)(?:[:_/-].*)?$",
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return {};
    return std::pair(match.captured(1), match.captured(2));
}

} // namespace plain
