#include "plain_columns.h"

#include "plain_layout.h"
#include "plain_p.h"
#include "plain_titles.h"
#include "title_table.h"

#include <QRegularExpression>
#include <QSet>
#include <map>

namespace plain {

namespace {

struct Failure {
    RefusalCode code;
};

template <typename List>
bool isIn(const List& list, const QString& text) {
    for (const std::string_view each : list)
        if (text == fromData(each))
            return true;
    return false;
}

struct Candidate {
    int column;
    int rank;
};

bool isPrepared(const QStringList& titles) {
    for (int i = 0; i < 4; ++i)
        if (titles.size() < 4 || titles[i] != fromData(title_table::prepared[i]))
            return false;
    return true;
}

class Chooser {
public:
    Chooser(const QStringList& titles, const QList<QStringList>& rows,
            const PrepareOptions& options)
        : m_titles(titles), m_rows(rows), m_options(options) {}

    Columns choose() {
        Columns columns;
        if (isPrepared(m_titles))
            choosePrepared(columns);
        else {
            choosePlace(columns);
            chooseP(columns);
        }
        columns.name = m_options.name ? named(*m_options.name) : nameColumn();
        if (columns.name < 0)
            columns.name = columns.joined;
        columns.test = m_options.test ? named(*m_options.test) : testColumn();
        for (int i = 0; i < m_titles.size(); ++i)
            if (isIn(title_table::traits, normalTitle(m_titles[i])))
                columns.traits << i;
        return columns;
    }

private:
    static void choosePrepared(Columns& columns) {
        columns.isPrepared = true;
        columns.chromosome = 0;
        columns.position = 1;
        columns.p = 2;
        columns.log = 3;
    }

    // A title as it stands, then in its normal form; then a number from 1.
    int named(const QByteArray& option) const {
        const QString text = QString::fromLatin1(option);
        for (int i = 0; i < m_titles.size(); ++i)
            if (m_titles[i] == text)
                return i;
        for (int i = 0; i < m_titles.size(); ++i)
            if (normalTitle(m_titles[i]) == normalTitle(text))
                return i;
        const int number = text.toInt();
        if (number < 1 || number > columnCount())
            throw Failure{RefusalCode::UnknownColumn};
        return number - 1;
    }

    qsizetype columnCount() const {
        return m_titles.isEmpty() && !m_rows.isEmpty() ? m_rows.first().size() : m_titles.size();
    }

    QStringList values(int column, qsizetype most) const {
        QStringList texts;
        for (const QStringList& row : m_rows)
            if (texts.size() < most && column < row.size() && !isMissing(row[column]))
                texts << row[column];
        return texts;
    }

    bool isJoined(int column) const {
        const QStringList texts = values(column, 10000);
        qsizetype fitting = 0;
        for (const QString& text : texts)
            if (joinedPlace(text))
                ++fitting;
        return !texts.isEmpty() && fitting * 100 >= texts.size() * 99;
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

    static int best(const QList<Candidate>& candidates) {
        for (int rank = 0; rank < 2; ++rank)
            for (const Candidate& each : candidates)
                if (each.rank == rank)
                    return each.column;
        return -1;
    }

    QList<Candidate> positionsIn(const title_table::Family& family) const {
        QList<Candidate> found = inFamily(family, title_table::positions);
        found.removeIf([this](const Candidate& each) {
            return placeTitle(m_titles[each.column]).contains("pos") &&
                   placeTitle(m_titles[each.column]).contains("chr") && isJoined(each.column);
        });
        return found;
    }

    bool differInBuildAlone(const QList<Candidate>& candidates) const {
        for (const Candidate& a : candidates)
            for (const Candidate& b : candidates) {
                const QString build = buildInTitle(m_titles[a.column]);
                const QString other = buildInTitle(m_titles[b.column]);
                if (a.rank == 0 && b.rank == 0 && !build.isEmpty() && !other.isEmpty() &&
                    build != other &&
                    placeTitle(m_titles[a.column]) == placeTitle(m_titles[b.column]))
                    return true;
            }
        return false;
    }

    // Whether two columns whose titles name no build hold other positions.
    bool differInValues(const QList<Candidate>& candidates) const {
        QList<int> plain;
        for (const Candidate& each : candidates)
            if (buildInTitle(m_titles[each.column]).isEmpty() &&
                each.rank == rankOf(candidates, best(candidates)))
                plain << each.column;
        for (const int column : std::as_const(plain)) {
            int all = 0, apart = 0;
            for (const QStringList& row : m_rows) {
                const Decimal a = decimal(row.value(plain.first())), b = decimal(row.value(column));
                all += a.isNumber && b.isNumber ? 1 : 0;
                apart += a.isNumber && b.isNumber && a.value != b.value ? 1 : 0;
            }
            if (apart * 100 > all)
                return true;
        }
        return false;
    }

    static int rankOf(const QList<Candidate>& candidates, int column) {
        for (const Candidate& each : candidates)
            if (each.column == column)
                return each.rank;
        return -1;
    }

    void choosePlace(Columns& columns) {
        if (m_options.chromosome)
            columns.chromosome = named(*m_options.chromosome);
        if (m_options.position)
            columns.position = named(*m_options.position);
        bool hasChromosome = columns.chromosome >= 0 || m_options.chromosomeValue.has_value();
        bool hasPosition = columns.position >= 0;
        for (const auto& family : title_table::families) {
            if (hasChromosome && hasPosition)
                break;
            if (m_options.authorBuild &&
                &family == &title_table::families[title_table::harmonisedFamily])
                continue;
            const int chromosome = best(inFamily(family, title_table::chromosomes));
            const int position = positionOf(family, columns);
            if ((!hasChromosome && chromosome < 0) || (!hasPosition && position < 0))
                continue;
            if (!hasPosition &&
                (differInBuildAlone(positionsIn(family)) || differInValues(positionsIn(family))))
                throw Failure{RefusalCode::SeveralBuilds};
            if (!hasChromosome)
                columns.chromosome = chromosome;
            if (!hasPosition)
                columns.position = position;
            hasChromosome = hasPosition = true;
        }
        if (hasPosition && hasChromosome)
            return findEnd(columns);
        columns.chromosome = columns.position = -1;
        chooseJoined(columns);
    }

    int positionOf(const title_table::Family& family, Columns& columns) const {
        const int position = best(positionsIn(family));
        if (position >= 0)
            return position;
        for (int i = 0; i < m_titles.size(); ++i)
            for (const std::string_view word : title_table::zeroBasedPositions)
                if (isOfFamily(m_titles[i], family, word)) {
                    columns.countsFrom0 = true;
                    return i;
                }
        return -1;
    }

    void findEnd(Columns& columns) const {
        if (columns.position >= m_titles.size() ||
            !isIn(title_table::starts, placeTitle(m_titles[columns.position])))
            return;
        for (int i = 0; i < m_titles.size(); ++i)
            if (isIn(title_table::ends, placeTitle(m_titles[i])))
                columns.end = i;
    }

    void chooseJoined(Columns& columns) const {
        for (const auto& entry : title_table::joinedTitles)
            for (int i = 0; i < m_titles.size(); ++i) {
                const QString title = placeTitle(m_titles[i]);
                const QString wanted = fromData(entry.title);
                if ((title == wanted || (entry.isPrefix && title.startsWith(wanted))) &&
                    isJoined(i)) {
                    columns.joined = i;
                    return;
                }
            }
        for (const auto& family : title_table::families)
            if (!inFamily(family, title_table::chromosomes).isEmpty())
                throw Failure{RefusalCode::NoPosition};
        throw Failure{RefusalCode::NoChromosome};
    }

    void chooseP(Columns& columns) {
        if (m_options.p) {
            const int column = named(*m_options.p);
            const auto title = column < m_titles.size() ? pTitle(m_titles[column]) : std::nullopt;
            take(columns, column, title && title->isLog, title && title->saysMinus);
            return;
        }
        std::map<int, PTitle> candidates;
        for (int i = 0; i < m_titles.size(); ++i)
            if (const auto title = pTitle(m_titles[i]))
                candidates[i] = *title;
        if (candidates.empty())
            throw Failure{RefusalCode::NoPValue};
        chooseAmong(columns, bestGroup(candidates));
    }

    static std::map<int, PTitle> bestGroup(const std::map<int, PTitle>& candidates) {
        std::pair<int, int> least(9, 9);
        for (const auto& [column, title] : candidates)
            least = std::min(least, std::pair(title.tier, title.rank));
        std::map<int, PTitle> group;
        for (const auto& [column, title] : candidates)
            if (std::pair(title.tier, title.rank) == least)
                group[column] = title;
        return group;
    }

    void chooseAmong(Columns& columns, const std::map<int, PTitle>& group) const {
        const PTitle& first = group.begin()->second;
        QList<int> p, logs;
        for (const auto& [column, title] : group) {
            if (title.others == first.others)
                (title.isLog ? logs : p) << column;
            else if (first.rank != 1)
                throw Failure{RefusalCode::SeveralPValues};
        }
        mustBeEqual(p);
        mustBeEqual(logs);
        if (!logs.isEmpty())
            take(columns, logs.first(), true, group.at(logs.first()).saysMinus);
        if (!p.isEmpty())
            take(columns, p.first(), false, false);
    }

    void mustBeEqual(const QList<int>& list) const {
        for (const int column : list)
            if (first1000(column) != first1000(list.first()))
                throw Failure{RefusalCode::SeveralPValues};
    }

    QStringList first1000(int column) const {
        QStringList texts;
        for (const QStringList& row : m_rows.first(qMin<qsizetype>(m_rows.size(), 1000)))
            texts << row.value(column);
        return texts;
    }

    void take(Columns& columns, int column, bool isLog, bool saysMinus) const {
        if (m_options.pScale)
            isLog = *m_options.pScale != PScale::P;
        if (!isLog) {
            columns.p = column;
            return;
        }
        columns.log = column;
        columns.logScale = m_options.pScale.value_or(PScale::NegLog10);
        columns.logScaleIsGiven = m_options.pScale.has_value();
        columns.logSaysMinus = saysMinus;
    }

    int nameColumn() const {
        for (const std::string_view name : title_table::names)
            for (int i = 0; i < m_titles.size(); ++i)
                if (placeTitle(m_titles[i]) == fromData(name))
                    return i;
        return -1;
    }

    int testColumn() const {
        for (int i = 0; i < m_titles.size(); ++i)
            if (isIn(title_table::tests, normalTitle(m_titles[i])))
                return i;
        return -1;
    }

    const QStringList& m_titles;
    const QList<QStringList>& m_rows;
    const PrepareOptions& m_options;
};

} // namespace

std::variant<Columns, RefusalCode> columnsOf(const QStringList& titles,
                                             const QList<QStringList>& rows,
                                             const PrepareOptions& options) {
    try {
        return Chooser(titles, rows, options).choose();
    } catch (const Failure& failure) {
        return failure.code;
    }
}

std::optional<Place> joinedPlace(const QString& text) {
    static const QRegularExpression form(
        "^((?:chr)?(?:\\d{1,2}[A-DLR]?|X|Y|Z|W|XY|M|MT)|chr.+?|NC_\\d+(?:\\.\\d+)?)"
        "[:_-](\\d+)(?:[:_/-].*)?$",
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return {};
    return Place{match.captured(1), match.captured(2)};
}

} // namespace plain
