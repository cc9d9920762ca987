#include "support/random_columns.h"

#include "support/random.h"
#include "support/random_texts.h"
#include "title_table.h"

#include <algorithm>
#include <cmath>

using namespace random_texts;

namespace {

QString numberText(Random& random, double number) {
    return QString::number(number, random.oneOf({'g', 'g', 'e'}), random.between(2, 17));
}

QString randomP(Random& random) {
    return random.oneIn(4) ? random.oneOf(goodPValues)
                           : numberText(random, std::pow(random.fraction(), random.between(1, 9)));
}

QString text(std::string_view data) {
    return QString::fromLatin1(data.data(), static_cast<qsizetype>(data.size()));
}

// A title in other letters, with another separator in it or the name of a genome build behind it.
QString varied(Random& random, QString title, bool mayNameBuild) {
    if (random.oneIn(3))
        title = title.toUpper();
    else if (random.oneIn(3))
        title[0] = title[0].toUpper();
    if (mayNameBuild && random.oneIn(8))
        title += random.oneOf({"_hg19", "(b37)", ".GRCh38", "_hg18build36", " b38"});
    if (random.oneIn(15))
        title += random.oneOf({" ", ".", "_"});
    if (random.oneIn(15))
        title.prepend(random.oneOf({" ", "_"}));
    return title;
}

template <typename List>
QString placeTitle(Random& random, const List& list, const title_table::Family& family) {
    QString title =
        random.oneIn(2) ? text(std::begin(list)->title) : text(random.oneOf(list).title);
    if (!family.prefixes[0].empty())
        title = text(family.prefixes[0]) + random.oneOf({"_", ""}) + title;
    if (!family.suffix.empty())
        title += "." + text(family.suffix);
    return varied(random, title, true);
}

} // namespace

RandomColumns::RandomColumns(Random& random, int oddness, PrepareOptions& options,
                             QByteArray& positions)
    : m_random(random), m_oddness(oddness), m_options(options), m_positions(positions) {
    makeColumns();
}

RandomColumns::Field RandomColumns::chromosomes() {
    const QStringList names = m_random.oneOf(chromosomeNames);
    m_current = m_random.oneOf(names);
    return [this, names](Random& random) {
        if (random.oneIn(m_oddness))
            return random.oneOf(oddChromosomes);
        if (random.oneIn(6))
            m_current = random.oneOf(names);
        return m_current;
    };
}

RandomColumns::Field RandomColumns::positions() {
    const int step = m_random.oneOf({1, 1000, 250000000 / 400});
    const bool isShuffled = m_random.oneIn(2);
    return [this, step, isShuffled](Random& random) {
        if (random.oneIn(m_oddness))
            return random.oneOf(oddPositions);
        m_position += random.below(step + 1);
        m_place = QString::number(isShuffled ? random.between(1, step * 300) : m_position);
        return m_place;
    };
}

RandomColumns::Field RandomColumns::pValues() {
    return [this](Random& random) {
        m_p = random.oneIn(m_oddness) ? random.oneOf(random.oneIn(3) ? missing : oddPValues)
                                      : randomP(random);
        return m_p;
    };
}

// The logarithm of the p in the same row, where there is one; else any.
RandomColumns::Field RandomColumns::logs(double sign, bool isPaired) {
    return [this, sign, isPaired](Random& random) {
        if (random.oneIn(m_oddness))
            return QString(
                random.oneOf({"NA", "", "x", "inf", "-3", "3", "0", "400.5", "1e5", "-0"}));
        const double p = m_p.toDouble();
        double log = random.fraction() * random.oneOf({2, 9, 320, 500});
        if (isPaired && p > 0)
            log = -std::log10(std::min(p, 1.0));
        return numberText(random, log == 0 ? 0 : sign * log);
    };
}

RandomColumns::Field RandomColumns::names(const QStringList& prefixes) {
    return [this, prefixes](Random& random) {
        ++m_name;
        const QString prefix = random.oneOf(prefixes);
        return prefix + QString::number(random.oneIn(20) ? m_name / 2 : m_name);
    };
}

RandomColumns::Field RandomColumns::joined() {
    const Field chromosome = chromosomes(), position = positions();
    const QString separator = m_random.oneOf({":", "_", "-"});
    const QString rest = m_random.oneOf({"", ":C:T", "_A/G", "_A_G_b38", "/x"});
    return [=, this](Random& random) {
        if (random.oneIn(m_oddness))
            return random.oneOf({QString("rs12"), QString("1:x"), QString("NA"), QString()});
        return chromosome(random) + separator + position(random) + rest;
    };
}

RandomColumns::Field RandomColumns::oneOf(const QStringList& texts) {
    return [texts](Random& random) { return random.oneOf(texts); };
}

void RandomColumns::addPlace() {
    const auto& family = m_random.oneIn(3) ? m_random.oneOf(title_table::families)
                                           : title_table::families[title_table::plainFamily];
    if (!m_random.oneIn(20))
        add(placeTitle(m_random, title_table::chromosomes, family), chromosomes());
    if (!m_random.oneIn(20))
        add(placeTitle(m_random, title_table::positions, family), positions());
    if (m_random.oneIn(12))
        addSecondPlace();
}

void RandomColumns::addSecondPlace() {
    const auto& family = m_random.oneOf(title_table::families);
    if (m_random.oneIn(2))
        add(placeTitle(m_random, title_table::chromosomes, family), chromosomes());
    add(placeTitle(m_random, title_table::positions, family),
        m_random.oneIn(2) ? [this](Random&) { return m_place; } : positions());
}

void RandomColumns::addJoined() {
    const auto& entry = m_random.oneOf(title_table::joinedTitles);
    const QString title = text(entry.title) + (entry.isPrefix && m_random.oneIn(3) ? "x" : "");
    add(varied(m_random, title, true), joined());
}

void RandomColumns::addP() {
    const int kind = m_random.below(12);
    if (kind < 8)
        add(m_random.oneIn(2) ? QStringLiteral("P") : m_random.oneOf(pTitles), pValues());
    if (kind == 7)
        add(m_random.oneOf(pTitles),
            m_random.oneIn(2) ? [this](Random&) { return m_p; } : pValues());
    if (kind == 6 || kind == 8)
        add(m_random.oneOf(logTitles), logs(-1, kind == 6));
    if (kind == 5 || kind == 9 || kind == 10)
        add(m_random.oneOf(negLogTitles), logs(1, kind == 5));
    if (m_random.oneIn(25))
        add(m_random.oneOf({"metaP", "PlinkP", "BonferroniP", "xP"}), pValues());
    if (m_random.oneIn(25))
        add(m_random.oneOf(pTitles), oneOf({"a", "b", "0.1", "NA"}));
}

// A table that was prepared before.
void RandomColumns::makePrepared() {
    m_areOfPreparedTable = true;
    const QList<Field> fields{chromosomes(), positions(), pValues(), logs(1, true)};
    for (int i = 0; i < fields.size(); ++i)
        add(text(title_table::prepared[i]), fields[i]);
    for (int i = m_random.below(3); i > 0; --i)
        add(m_random.oneOf({"SNP", "BETA", "gene", "P", "Position"}), oneOf({"A", "0.25", "NA"}));
}

// Effects that p is to be computed from.
void RandomColumns::addEffects() {
    const auto number = [this](double size) {
        return [this, size](Random& random) {
            if (random.oneIn(m_oddness))
                return QString(random.oneOf({"NA", "0", "-0", "x", "", "inf"}));
            return numberText(random, (random.fraction() - 0.5) * size);
        };
    };
    const bool isZ = m_random.oneIn(2);
    m_options.pSource = isZ ? PSource::Z : PSource::BetaAndError;
    if (isZ)
        return add(text(m_random.oneOf(title_table::zTitles)), number(m_random.oneOf({8, 250})));
    add(text(m_random.oneOf(title_table::betaTitles)), number(2));
    add(text(m_random.oneOf(title_table::errorTitles)),
        oneOf({"0.1", "0.02", "1e-2", "0.5", m_random.oneIn(20) ? "0" : "0.3"}));
}

// A VCF with a scan for each of its samples, in LP.
void RandomColumns::makeVcf() {
    m_areOfVcf = true;
    const QString format = m_random.oneOf({"ES:SE:LP", "LP", "ES:LP:AF", "ES:SE"});
    const QList<Field> fields{chromosomes(),   positions(),     names({"rs"}),
                              oneOf({"A"}),    oneOf({"C"}),    oneOf({"."}),
                              oneOf({"PASS"}), oneOf({"AF=1"}), oneOf({format, format, "LP"})};
    for (int i = 0; i < fields.size(); ++i)
        add(text(title_table::vcf[i]), fields[i]);
    const int samples = m_random.oneOf({1, 1, 2, 3});
    for (int i = 1; i <= samples; ++i) {
        const Field log = logs(1, false);
        const qsizetype places = format.count(u':') + 1;
        add("scan" + QString::number(i), [log, places](Random& random) {
            QStringList values;
            for (qsizetype place = 0; place < places; ++place)
                values << log(random);
            return values.join(u':');
        });
    }
    if (m_random.oneIn(samples == 1 ? 8 : 2))
        m_options.sample = m_random.oneOf({"scan1", "scan2", "10"});
}

// Names without a place, and a table with the places of most of them.
void RandomColumns::addNamesAlone() {
    add(m_random.oneOf({"SNP", "rsid", "MarkerName"}), names({"rs"}));
    const Field chromosome = chromosomes(), position = positions();
    const bool hasTitles = m_random.oneIn(2);
    QStringList lines;
    if (hasTitles)
        lines << "CHR\tSNP\tBP";
    for (int i = 1; i <= 130; ++i) {
        QStringList fields{chromosome(m_random), "rs" + QString::number(i)};
        if (!hasTitles)
            fields << "0.5";
        fields << position(m_random);
        bool isWhole = false;
        fields.last().toInt(&isWhole);
        if (!fields.contains(QString()) && (isWhole || hasTitles) &&
            (i < 25 || !m_random.oneIn(10)))
            lines << fields.join(u'\t');
    }
    m_positions = lines.join(u'\n').toUtf8() + '\n';
}

void RandomColumns::makeColumns() {
    const int kind = m_random.below(30);
    if (kind == 0)
        return makeVcf();
    if (kind == 29)
        return makePrepared();
    if (kind < 3)
        addNamesAlone();
    else if (kind < 9)
        addJoined();
    else
        addPlace();
    if (kind == 10 || kind == 11)
        addEffects();
    else
        addP();
    if (kind > 2 && m_random.oneIn(2))
        add(varied(m_random, text(m_random.oneOf(title_table::names)), false), names({"rs"}));
    if (m_random.oneIn(10))
        add(m_random.oneOf({"TEST", "Model", "test"}),
            oneOf(m_random.oneOf<QStringList>(
                {{"ADD"}, {"ADD", "DOMDEV"}, {"DOM", "REC"}, {"ADD", "GENO_2DF", "COV1"}})));
    if (m_random.oneIn(20))
        add("INFO",
            [this](Random& random) { return "A=1;LOG10P=" + logs(1, true)(random) + ";B=2"; });
    if (m_random.oneIn(12))
        add(text(m_random.oneOf(title_table::traits)),
            oneOf(m_random.oneOf<QStringList>({{"BMI"}, {"BMI", "HDL"}})));
    for (int i = m_random.below(5); i > 0; --i)
        add(m_random.oneOf(traps), oneOf({"A", "0.25", "-1.5", "17", "NA"}));
    for (qsizetype i = m_columns.size() - 1; i > 0; --i)
        m_columns.swapItemsAt(i, m_random.below(static_cast<int>(i) + 1));
}
