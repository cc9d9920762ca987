#include "support/random_table.h"

#include "support/random.h"
#include "title_table.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <functional>

namespace {

const QStringList pTitles{"P",
                          "p",
                          "PVAL",
                          "P-value",
                          "p.value",
                          "p value",
                          "Pvalue",
                          "P_BOLT_LMM",
                          "P_BOLT_LMM_INF",
                          "P_LINREG",
                          "p_wald",
                          "p_lrt",
                          "p_score",
                          "P(R)",
                          "pval_EUR",
                          "P_AFR",
                          "meta_p",
                          "mtag_pval",
                          "GWASpval",
                          "P_GC",
                          "p.value.NA",
                          "p_noSPA",
                          "UNADJ",
                          "P.bmiadj",
                          "pval_nominal",
                          "frequentist_add_pvalue",
                          "PVALUE_RE",
                          "pvalue_meta",
                          "\xe9_p"};
const QStringList negLogTitles{"LOG10P",
                               "NEG_LOG10_P",
                               "MLOG10P",
                               "neg_log_10_p_value",
                               "mlogp",
                               "neglog10_pval_EUR",
                               "LP",
                               "pval(-log10)",
                               "-log10p",
                               "minus_log10_pval",
                               "log_pvalue",
                               "PVALUE_MLOG",
                               "-log10(P)",
                               "trait1-log10p",
                               "pvalue_neg_log10_GC"};
const QStringList logTitles{"log(P)", "LOG10_P", "log10p", "log_p_value"};
const QStringList traps{"",
                        "HetPVal",
                        "Q_pval",
                        "P_fdr",
                        "BONF",
                        "pJ",
                        "PlinkP",
                        "exposure",
                        "cM",
                        "GenePos",
                        "GeneChr",
                        "pos_id",
                        "BETA",
                        "SE",
                        "A1",
                        "A2",
                        "EAF",
                        "N",
                        "INFO",
                        "END",
                        "GENE_CHROMOSOME",
                        "HWE_P",
                        "P-VALUE (TEXT)",
                        "padj",
                        "DISTANCE",
                        "lnBF",
                        "x",
                        "LOG10BF",
                        "logl_H1",
                        "adj_p",
                        "emp_p",
                        "GeneticDistance",
                        "Z",
                        "threshold",
                        "P_hetero",
                        "log_odds",
                        "MLOG10P_HET",
                        "chrpost",
                        "sp",
                        "pval_perm",
                        "\xc2\xa6\xc3\xa2"};

const QStringList missing{"NA",   "N/A",  "n/a",  "na", "nan", "NaN", "-nan", "null",
                          "NULL", "None", "NONE", ".",  "-",   "#NA", "NR"};

const QStringList goodPValues{"0.001",
                              "0.5",
                              "1",
                              "1e-300",
                              "5e-08",
                              "0.04999",
                              "1.45E-18",
                              "3.2e-5",
                              "0.1",
                              ".25",
                              "1.",
                              "7e+0",
                              "0.000001",
                              "4.5e-310",
                              "0.30102999566398120",
                              "0.1e1",
                              "00.5",
                              "123456789012345678e-20",
                              "4.94065645841247e-324",
                              "1e-400",
                              "4e-400",
                              "2e-324",
                              "<2e-16",
                              "<4.9E-324",
                              "< 1e-9",
                              "1.0000001",
                              "1.000001",
                              "+0.5",
                              "1.0",
                              "0.9999999",
                              "2.2250738585072014e-308",
                              "3e-308",
                              "1e-323"};
const QStringList oddPValues{"0",
                             "0.0",
                             "0e0",
                             "-0",
                             "1.5",
                             "-0.5",
                             "12",
                             "inf",
                             "-inf",
                             "Inf",
                             "1e",
                             "e1",
                             "x",
                             "--1",
                             "1e400",
                             "0x10",
                             "1.2.3",
                             "NA ",
                             "+",
                             "0e-99999",
                             "1.00001",
                             "infinity",
                             "<",
                             "<x",
                             "1e-5e",
                             "0.5a",
                             "<0",
                             "1e0000000000000000001",
                             "<2",
                             "NAN",
                             "Na",
                             "1,5",
                             "99999999999999999999e-30"};
const QStringList oddPositions{"-5",
                               "+7",
                               "0",
                               "-0",
                               "007",
                               "1.0",
                               "1e3",
                               "x",
                               "2147483647",
                               "2147483648",
                               "99999999999999999999",
                               "1,000",
                               "0x1f",
                               "--5",
                               "1e+05",
                               "12345.0",
                               "7.5",
                               "1_0",
                               "1.5e1",
                               "1e-1",
                               "4294967297",
                               "-9",
                               "0.0",
                               "1,00",
                               "NA",
                               ".",
                               "12345.",
                               "1e99"};
const QStringList oddChromosomes{"NA", "", ".", "0", "-9", "Un", "un", "NR", "#NA", "chr"};

// What parts the fields of a line, and how texts stand between.
struct Layout {
    QString separator;
    QString headerSeparator;
    bool alignsWithSpaces = false;
    bool quotes = false;
    bool quotesAll = false;
    bool decimalComma = false;
    bool endsWithSeparator = false;
    QString lineEnd;
    int oddness = 1000; // one text in so many is odd
};

using Field = std::function<QString(Random&)>;

struct Column {
    QString title;
    Field field;
};

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

QStringList chromosomeNames(Random& random) {
    return random.oneOf<QStringList>({{"1"},
                                      {"1", "2"},
                                      {"1", "chr1", "01", "Chr1", "2"},
                                      {"chr1", "chr2", "chr10", "chrX"},
                                      {"2", "10", "1", "X", "Y", "MT", "M", "XY", "x"},
                                      {"1A", "1B", "2D", "10A", "1", "W", "Z"},
                                      {"23", "24", "25", "26", "1", "22"},
                                      {"23", "26", "29"},
                                      {"24", "23", "2"},
                                      {"25", "23", "X"},
                                      {"25", "27", "chr3"},
                                      {"sca2", "sca10", "sca1", "1"},
                                      {"Gm01", "Gm02", "Gm20", "scaffold_12"},
                                      {"2L", "2R", "3L", "X", "4", "2l"},
                                      {"NC_000001.10", "NC_000023.11", "NC_012920.1", "1", "X"},
                                      {"1", "Un", "0", "2"},
                                      {"chr1_random", "chr1", "chrUn"}});
}

class Maker {
public:
    explicit Maker(Random& random) : m_random(random) {}

    RandomTable make() {
        makeLayout();
        makeColumns();
        makeOptions();
        chooseAmongParts();
        if (m_random.oneIn(25))
            dropHeader();
        m_mark = !m_layout.alignsWithSpaces && m_random.oneIn(15) ? "#" : "";
        const int files = m_random.oneIn(10) ? 2 : 1;
        for (int i = 0; i < files; ++i)
            m_table.files << file();
        return m_table;
    }

private:
    void makeLayout() {
        static const QStringList separators{"\t", "\t", "\t", ",", ",", ";", " ", "  "};
        m_layout.separator = m_layout.headerSeparator = m_random.oneOf(separators);
        m_layout.alignsWithSpaces = m_layout.separator == u" " && m_random.oneIn(2);
        m_layout.quotes = m_random.oneIn(4);
        m_layout.quotesAll = m_layout.quotes && m_random.oneIn(3);
        m_layout.decimalComma = m_layout.separator == u";" && m_random.oneIn(2);
        m_layout.endsWithSeparator = m_random.oneIn(25);
        m_layout.lineEnd = m_random.oneOf({"\n", "\n", "\n", "\r\n", "\r"});
        m_layout.oddness = m_random.oneOf({30, 200, 200, 1000, 100000});
        if (m_layout.separator == u"\t" && m_random.oneIn(12))
            m_layout.headerSeparator = " ";
    }

    Field chromosomes() {
        const QStringList names = chromosomeNames(m_random);
        const int oddness = m_layout.oddness;
        m_current = m_random.oneOf(names);
        return [this, names, oddness](Random& random) {
            if (random.oneIn(oddness))
                return random.oneOf(oddChromosomes);
            if (random.oneIn(6))
                m_current = random.oneOf(names);
            return m_current;
        };
    }

    Field positions() {
        const int step = m_random.oneOf({1, 1000, 250000000 / 400});
        const bool isShuffled = m_random.oneIn(2);
        const int oddness = m_layout.oddness;
        return [this, step, isShuffled, oddness](Random& random) {
            if (random.oneIn(oddness))
                return random.oneOf(oddPositions);
            m_position += random.below(step + 1);
            return QString::number(isShuffled ? random.between(1, step * 300) : m_position);
        };
    }

    Field pValues() {
        const int oddness = m_layout.oddness;
        return [this, oddness](Random& random) {
            m_p = random.oneIn(oddness) ? random.oneOf(random.oneIn(3) ? missing : oddPValues)
                                        : randomP(random);
            return m_p;
        };
    }

    // The logarithm of the p in the same row, where there is one; else any.
    Field logs(double sign, bool isPaired) {
        const int oddness = m_layout.oddness;
        return [this, sign, isPaired, oddness](Random& random) {
            if (random.oneIn(oddness))
                return QString(
                    random.oneOf({"NA", "", "x", "inf", "-3", "3", "0", "400.5", "1e5", "-0"}));
            const double p = m_p.toDouble();
            double log = random.fraction() * random.oneOf({2, 9, 320, 500});
            if (isPaired && p > 0)
                log = -std::log10(std::min(p, 1.0));
            return numberText(random, log == 0 ? 0 : sign * log);
        };
    }

    Field names(const QStringList& prefixes) {
        return [this, prefixes](Random& random) {
            ++m_name;
            const QString prefix = random.oneOf(prefixes);
            return prefix + QString::number(random.oneIn(20) ? m_name / 2 : m_name);
        };
    }

    Field joined() {
        const Field chromosome = chromosomes(), position = positions();
        const QString separator = m_random.oneOf({":", "_", "-"});
        const QString rest = m_random.oneOf({"", ":C:T", "_A/G", "_A_G_b38", "/x"});
        const int oddness = m_layout.oddness;
        return [=](Random& random) {
            if (random.oneIn(oddness))
                return random.oneOf({QString("rs12"), QString("1:x"), QString("NA"), QString()});
            return chromosome(random) + separator + position(random) + rest;
        };
    }

    Field oneOf(const QStringList& texts) {
        return [texts](Random& random) { return random.oneOf(texts); };
    }

    void add(const QString& title, const Field& field) { m_columns.append({title, field}); }

    void addPlace() {
        const auto& family = m_random.oneIn(3) ? m_random.oneOf(title_table::families)
                                               : title_table::families[title_table::plainFamily];
        if (!m_random.oneIn(20))
            add(placeTitle(m_random, title_table::chromosomes, family), chromosomes());
        if (!m_random.oneIn(20))
            add(placeTitle(m_random, title_table::positions, family), positions());
        if (m_random.oneIn(12))
            addSecondPlace();
    }

    void addSecondPlace() {
        const auto& family = m_random.oneOf(title_table::families);
        if (m_random.oneIn(2))
            add(placeTitle(m_random, title_table::chromosomes, family), chromosomes());
        add(placeTitle(m_random, title_table::positions, family), positions());
    }

    void addJoined() {
        const auto& entry = m_random.oneOf(title_table::joinedTitles);
        const QString title = text(entry.title) + (entry.isPrefix && m_random.oneIn(3) ? "x" : "");
        add(varied(m_random, title, true), joined());
    }

    void addP() {
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
    }

    // Effects that p is to be computed from.
    void addEffects() {
        const auto number = [this](double size) {
            return [this, size](Random& random) {
                if (random.oneIn(m_layout.oddness))
                    return QString(random.oneOf({"NA", "0", "-0", "x", "", "inf"}));
                return numberText(random, (random.fraction() - 0.5) * size);
            };
        };
        const bool isZ = m_random.oneIn(2);
        m_table.options.pSource = isZ ? PSource::Z : PSource::BetaAndError;
        if (isZ)
            return add(text(m_random.oneOf(title_table::zTitles)),
                       number(m_random.oneOf({8, 250})));
        add(text(m_random.oneOf(title_table::betaTitles)), number(2));
        add(text(m_random.oneOf(title_table::errorTitles)),
            oneOf({"0.1", "0.02", "1e-2", "0.5", m_random.oneIn(20) ? "0" : "0.3"}));
    }

    // A VCF with a scan for each of its samples, in LP.
    void makeVcf() {
        m_layout = {
            "\t", "\t", false, false, false, false, false, m_layout.lineEnd, m_layout.oddness};
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
            m_table.options.sample = m_random.oneOf({"scan1", "scan2", "10"});
    }

    // Names without a place, and a table with the places of most of them.
    void addNamesAlone() {
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
        m_table.positions = lines.join(u'\n').toUtf8() + '\n';
    }

    void makeColumns() {
        const int kind = m_random.below(30);
        if (kind == 0)
            return makeVcf();
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

    // Options that keep one of several tests, traits or other values.
    void chooseAmongParts() {
        if (m_random.oneIn(30))
            m_table.options.where.append({anyColumn(), m_random.oneOf({"ADD", "0.25", "NA"})});
        for (const Column& column : std::as_const(m_columns))
            if (m_random.oneIn(3) &&
                std::find(std::begin(title_table::traits), std::end(title_table::traits),
                          column.title.toStdString()) != std::end(title_table::traits))
                m_table.options.where.append({column.title.toUtf8(), "BMI"});
    }

    // Without titles, the columns are named by their numbers.
    void dropHeader() {
        m_hasHeader = false;
        PrepareOptions& options = m_table.options;
        const auto number = [this] {
            return QByteArray::number(m_random.between(1, static_cast<int>(m_columns.size())));
        };
        options.noHeader = true;
        options.chromosome = number();
        options.position = number();
        options.p = number();
        options.name = m_random.oneIn(2) ? std::optional(number()) : std::nullopt;
        options.where.clear();
        options.allColumns = false;
    }

    QByteArray anyColumn() {
        const int column = m_random.below(static_cast<int>(m_columns.size()));
        if (m_random.oneIn(2))
            return m_columns[column].title.trimmed().toUtf8();
        return QByteArray::number(column + 1);
    }

    void makeOptions() {
        PrepareOptions& options = m_table.options;
        options.allColumns = m_random.oneIn(5);
        options.lineNumbers = m_random.oneIn(5);
        options.zeroP =
            m_random.oneOf({ZeroP::Smallest, ZeroP::Smallest, ZeroP::Drop, ZeroP::Fail});
        if (m_random.oneIn(3))
            options.chromosomeNames =
                m_random.oneOf({ChromosomeNames::Plain, ChromosomeNames::Chr});
        options.minMarkers = m_random.oneIn(10) ? 3 : 1;
        options.zeroBased = m_random.oneIn(15);
        options.authorBuild = m_random.oneIn(15);
        if (m_random.oneIn(25))
            options.chromosome = anyColumn();
        if (m_random.oneIn(25))
            options.position = anyColumn();
        if (m_random.oneIn(20))
            options.p = anyColumn();
        if (m_random.oneIn(25))
            options.name = anyColumn();
        if (m_random.oneIn(30) && !options.chromosome)
            options.chromosomeValue = "7";
        if (m_random.oneIn(20))
            options.pScale =
                m_random.oneOf({PScale::P, PScale::NegLog10, PScale::Log10, PScale::Ln});
        if (m_random.oneIn(30))
            options.testName = m_random.oneOf({"ADD", "DOM"});
    }

    QString quoted(const QString& field) {
        const bool needsQuotes = field.contains(m_layout.separator) && m_layout.separator != u"  ";
        if (!m_layout.quotesAll && !(m_layout.quotes && (needsQuotes || m_random.oneIn(5))))
            return needsQuotes ? QString(field).remove(m_layout.separator) : field;
        return u'"' + field + u'"';
    }

    QString line(QStringList fields, const QString& separator) {
        for (QString& field : fields) {
            if (separator.startsWith(u' ') && field.startsWith(u'<'))
                field.remove(u' ');
            field = quoted(field);
            if (separator.startsWith(u' ') && field.isEmpty())
                field = "NA";
            if (m_layout.alignsWithSpaces)
                field = field.rightJustified(m_random.oneOf({8, 12}));
        }
        if (m_layout.endsWithSeparator)
            fields << QString();
        return fields.join(separator);
    }

    QString headerLine() {
        QStringList titles;
        for (const Column& column : std::as_const(m_columns))
            titles << (m_layout.headerSeparator == u" " ? QString(column.title).replace(u' ', u'_')
                                                        : column.title);
        return line(titles, m_layout.headerSeparator);
    }

    QString dataLine() {
        QStringList fields;
        for (const Column& column : std::as_const(m_columns))
            fields << column.field(m_random);
        if (m_layout.decimalComma)
            for (QString& field : fields)
                field.replace(u'.', u',');
        if (m_random.oneIn(m_layout.oddness * 3))
            fields.resize(m_random.between(1, static_cast<int>(fields.size())));
        return line(fields, m_layout.separator);
    }

    QString preamble() {
        QStringList lines;
        if (m_random.oneIn(10))
            lines << "## made by a tool"
                  << "##more=1,2";
        if (m_random.oneIn(12))
            lines << "# a comment";
        if (m_random.oneIn(12))
            lines << "Some p-values in this file are 0 because they are too small";
        if (m_random.oneIn(20))
            lines << QString();
        return lines.isEmpty() ? QString() : lines.join(m_layout.lineEnd) + m_layout.lineEnd;
    }

    QByteArray file() {
        m_position = m_name = 0;
        const QString header = m_mark + headerLine();
        QString content = preamble() + (m_hasHeader ? header + m_layout.lineEnd : QString());
        const int oddness = m_layout.oddness * 3;
        for (int lines = m_random.oneOf({1, 5, 12, 12, 40, 120}); lines > 0; --lines) {
            if (m_random.oneIn(oddness))
                content += m_random.oneOf({QString(), header, QStringLiteral("# note"),
                                           QStringLiteral("  ")}) +
                           m_layout.lineEnd;
            content += dataLine() + m_layout.lineEnd;
        }
        if (m_random.oneIn(30))
            content += "# Completed successfully" + m_layout.lineEnd;
        if (m_random.oneIn(8))
            content.chop(m_layout.lineEnd.size());
        return (m_random.oneIn(12) ? QByteArray("\xef\xbb\xbf") : QByteArray()) + content.toUtf8();
    }

    Random& m_random;
    Layout m_layout;
    QList<Column> m_columns;
    RandomTable m_table;
    QString m_current;
    QString m_p;
    QString m_mark; // before the first title
    bool m_hasHeader = true;
    int m_position = 0;
    int m_name = 0;
};

} // namespace

RandomTable randomTable(Random& random) {
    return Maker(random).make();
}
