#include "plain_columns.h"

#include "plain_layout.h"
#include "plain_p.h"
#include "plain_place.h"
#include "plain_titles.h"
#include "title_table.h"

#include <QRegularExpression>
#include <algorithm>
#include <iterator>
#include <map>

namespace plain {

namespace {

class Chooser {
public:
    Chooser(const Layout& layout, const QList<QStringList>& rows, const PrepareOptions& options)
        : m_layout(layout), m_titles(layout.titles), m_rows(rows), m_options(options) {}

    Columns choose() const {
        Columns columns;
        const int chromosome = named(m_options.chromosome), position = named(m_options.position);
        const int p = named(m_options.p), name = named(m_options.name), z = named(m_options.z);
        const int beta = named(m_options.beta), error = named(m_options.standardError);
        const int test = named(m_options.test), sample = named(m_options.sample);
        chooseFilters(columns);
        choosePlace(m_layout, m_rows, m_options, {chromosome, position, name}, columns);
        if (isVcf() && p < 0)
            chooseSample(columns, sample);
        else if (m_options.pSource != PSource::Column)
            chooseEffect(columns, z, beta, error);
        else
            chooseP(columns, p);
        columns.name = name >= 0 ? name : nameColumn();
        if (columns.name < 0)
            columns.name = columns.joined;
        if (columns.name < 0 && columns.position < 0)
            throw Failure{RefusalCode::NoPosition};
        columns.test = test >= 0 ? test : leftmost(title_table::tests);
        for (int i = 0; i < m_titles.size(); ++i)
            if (isIn(title_table::traits, normalTitle(m_titles[i])) && !columns.isTaken(i))
                columns.traits << i;
        columns.info = columns.format < 0 ? infoColumn() : -1;
        return columns;
    }

    Columns choosePrepared() const {
        Columns columns;
        columns.isPrepared = true;
        columns.chromosome = m_options.chromosomeValue ? -1 : 0;
        columns.position = 1;
        columns.p = 2;
        columns.log = 3;
        chooseFilters(columns);
        return columns;
    }

private:
    // A title as it stands; then a number from 1; then a title in its normal form.
    int named(const std::optional<QByteArray>& option) const {
        if (!option)
            return -1;
        const QString text = QString::fromLatin1(*option);
        const int number = text.toInt();
        QList<int> found = where([&](const QString& title) { return title == text; });
        if (found.isEmpty() && number >= 1 && number <= columnCount())
            return number - 1;
        if (found.isEmpty())
            found = where([&](const QString& t) { return normalTitle(t) == normalTitle(text); });
        if (found.size() != 1)
            throw Failure{RefusalCode::UnknownColumn};
        return found.first();
    }

    void chooseFilters(Columns& columns) const {
        for (const auto& [title, value] : m_options.where)
            columns.where << qMakePair(named(title), QString::fromLatin1(value));
    }

    template <typename Passes>
    QList<int> where(const Passes& passes) const {
        QList<int> found;
        for (int i = 0; i < m_titles.size(); ++i)
            if (passes(m_titles[i]))
                found << i;
        return found;
    }

    qsizetype columnCount() const {
        return m_titles.isEmpty() && !m_rows.isEmpty() ? m_rows.first().size() : m_titles.size();
    }

    // The first title of the list that there is, and the leftmost column with it.
    template <typename List>
    int leftmost(const List& list) const {
        for (const std::string_view each : list)
            for (int i = 0; i < m_titles.size(); ++i)
                if (normalTitle(m_titles[i]) == fromData(each))
                    return i;
        return -1;
    }

    bool isVcf() const {
        QStringList fixed;
        for (const std::string_view title : title_table::vcf)
            fixed << fromData(title);
        return m_titles.size() > fixed.size() && m_titles.mid(0, fixed.size()) == fixed;
    }

    void chooseSample(Columns& columns, int sample) const {
        const int first = static_cast<int>(std::size(title_table::vcf));
        if (sample < 0 && m_titles.size() > first + 1)
            throw Failure{RefusalCode::SeveralSamples};
        columns.format = first - 1;
        columns.log = sample < 0 ? first : sample;
        columns.logSaysMinus = true;
        for (const QStringList& row : m_rows)
            if (row.value(columns.format).split(u':').contains("LP"))
                return;
        throw Failure{RefusalCode::NoPValue};
    }

    void chooseEffect(Columns& columns, int z, int beta, int error) const {
        const bool isZ = m_options.pSource == PSource::Z;
        if (isZ)
            columns.effect = z >= 0 ? z : firstOf(title_table::zTitles);
        else
            columns.effect = beta >= 0 ? beta : firstOf(title_table::betaTitles);
        if (!isZ)
            columns.error = error >= 0 ? error : firstOf(title_table::errorTitles);
        if (columns.effect < 0 || (!isZ && columns.error < 0))
            throw Failure{RefusalCode::NoPValue};
    }

    int infoColumn() const {
        const int info = firstOf(QList<std::string_view>{"info"});
        for (const QStringList& row : m_rows.mid(0, 100))
            if (row.value(info).contains("LOG10P="))
                return info;
        return -1;
    }

    template <typename List>
    int firstOf(const List& list) const {
        return where([&](const QString& title) { return isIn(list, normalTitle(title)); })
            .value(0, -1);
    }

    void chooseP(Columns& columns, int p) const {
        std::map<int, PTitle> candidates;
        for (int i = 0; i < m_titles.size(); ++i)
            if (const auto title = pTitle(m_titles[i]))
                candidates[i] = *title;
        if (p >= 0)
            return takeNamed(columns, p, candidates);
        std::erase_if(candidates, [](const auto& each) { return each.second.isNever; });
        if (candidates.empty())
            throw Failure{RefusalCode::NoPValue};
        std::map<int, PTitle> group = bestGroup(candidates);
        if (const PTitle& best = group.begin()->second; best.tier > 0 || best.rank > 1)
            mustHaveNoGluedTitle();
        const auto isText = [this](const auto& each) { return holdsTexts(each.first); };
        if (!std::all_of(group.begin(), group.end(), isText))
            std::erase_if(group, isText);
        chooseAmong(columns, group);
    }

    QStringList values(int column) const {
        QStringList texts;
        for (const QStringList& row : m_rows.mid(0, 1000))
            if (!isMissing(row.value(column)))
                texts << m_layout.withPoint(row[column]);
        return texts;
    }

    // A column like pval_origin says something about p.
    bool holdsTexts(int column) const {
        int numbers = 0, texts = 0;
        for (const QString& text : values(column))
            ++(readP(text).kind == PText::NotANumber ? texts : numbers);
        return texts > numbers;
    }

    // A title such as metaP, whose values may be those of p, weighs against a title like sexdiff_p.
    void mustHaveNoGluedTitle() const {
        static const QRegularExpression glued("[a-z]P$");
        for (int i = 0; i < m_titles.size(); ++i)
            if (glued.match(m_titles[i]).hasMatch() && !pTitle(m_titles[i]) &&
                !pTitle(m_titles[i].chopped(1) + "_p")->isNever && holdsProbabilities(i))
                throw Failure{RefusalCode::SeveralPValues};
    }

    bool holdsProbabilities(int column) const {
        const QStringList texts = values(column);
        return !texts.isEmpty() && std::all_of(texts.begin(), texts.end(), [](const QString& text) {
            const Decimal number = decimal(text);
            return number.isFinite && static_cast<double>(number.value) >= 0 &&
                   static_cast<double>(number.value) <= 1;
        });
    }

    // With it goes the only logarithm of the same words.
    void takeNamed(Columns& columns, int p, const std::map<int, PTitle>& candidates) const {
        const auto found = candidates.find(p);
        if (found == candidates.end())
            return take(columns, p, false, false);
        if (found->second.isLog)
            return take(columns, p, true, found->second.saysMinus);
        QList<int> logs;
        for (const auto& [column, title] : candidates)
            if (title.isLog && title.others == found->second.others)
                logs << column;
        if (logs.size() == 1)
            take(columns, logs.first(), true, candidates.at(logs.first()).saysMinus);
        take(columns, p, false, false);
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
            for (const QStringList& row : m_rows.mid(0, 1000))
                if (!areEqual(row.value(column), row.value(list.first())))
                    throw Failure{RefusalCode::SeveralPValues};
    }

    bool areEqual(const QString& a, const QString& b) const {
        if (isMissing(a) || isMissing(b))
            return isMissing(a) == isMissing(b);
        const Decimal x = decimal(m_layout.withPoint(a)), y = decimal(m_layout.withPoint(b));
        return a == b || (x.isFinite && y.isFinite &&
                          static_cast<double>(x.value) == static_cast<double>(y.value));
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

    const Layout& m_layout;
    const QStringList& m_titles;
    const QList<QStringList>& m_rows;
    const PrepareOptions& m_options;
};

} // namespace

std::variant<Columns, RefusalCode> columnsOf(const Layout& layout, const QList<QStringList>& rows,
                                             const PrepareOptions& options, bool isPrepared) {
    const Chooser chooser(layout, rows, options);
    try {
        return isPrepared ? chooser.choosePrepared() : chooser.choose();
    } catch (const Failure& failure) {
        return failure.code;
    }
}

} // namespace plain
