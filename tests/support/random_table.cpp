#include "support/random_table.h"

#include "support/random.h"
#include "support/random_columns.h"
#include "title_table.h"

#include <QStringList>
#include <algorithm>

namespace {

// What parts the fields of a line, and how texts stand between.
struct Layout {
    QString separator;
    QString headerSeparator;
    bool alignsWithSpaces = false;
    bool quotes = false;
    bool quotesAll = false;
    bool decimalComma = false;
    bool endsWithSeparator = false;
    bool endsInList = false;
    QString rowNames; // what they begin with, before a number; null for none
    QString lineEnd;
    int oddness = 1000; // one text in so many is odd
};

Layout randomLayout(Random& random) {
    Layout layout;
    layout.separator = layout.headerSeparator =
        random.oneOf({"\t", "\t", "\t", ",", ",", ";", " ", "  "});
    layout.alignsWithSpaces = layout.separator == u" " && random.oneIn(2);
    layout.quotes = random.oneIn(4);
    layout.quotesAll = layout.quotes && random.oneIn(3);
    layout.decimalComma =
        layout.separator != u"," && random.oneIn(layout.separator == u";" ? 2 : 8);
    layout.endsWithSeparator = random.oneIn(25);
    layout.endsInList = random.oneIn(50);
    if (random.oneIn(30))
        layout.rowNames = random.oneOf({"", "\"", "rs", "x"});
    layout.lineEnd = random.oneOf({"\n", "\n", "\n", "\r\n", "\r"});
    layout.oddness = random.oneOf({30, 200, 200, 1000, 100000});
    if (layout.separator == u"\t" && random.oneIn(12))
        layout.headerSeparator = " ";
    return layout;
}

// Tabs and no quotes, with the same line ends.
Layout plainLayout(const Layout& other) {
    Layout layout;
    layout.separator = layout.headerSeparator = "\t";
    layout.lineEnd = other.lineEnd;
    layout.oddness = other.oddness;
    return layout;
}

class Maker {
public:
    explicit Maker(Random& random)
        : m_random(random), m_layout(randomLayout(random)),
          m_columns(random, m_layout.oddness, m_table.options, m_table.positions) {
        if (m_columns.areOfVcf() || m_columns.areOfPreparedTable())
            m_layout = plainLayout(m_layout);
    }

    RandomTable make() {
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
    // Options that keep one of several tests, traits or other values.
    void chooseAmongParts() {
        if (m_random.oneIn(30))
            m_table.options.where.append({anyColumn(), m_random.oneOf({"ADD", "0.25", "NA"})});
        for (const RandomColumns::Column& column : m_columns.all())
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
            return QByteArray::number(
                m_random.between(1, static_cast<int>(m_columns.all().size())));
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
        const int column = m_random.below(static_cast<int>(m_columns.all().size()));
        if (m_random.oneIn(2))
            return m_columns.all()[column].title.trimmed().toUtf8();
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
        for (const RandomColumns::Column& column : m_columns.all())
            titles << (m_layout.headerSeparator == u" " ? QString(column.title).replace(u' ', u'_')
                                                        : column.title);
        if (m_layout.endsInList)
            titles << "genes_tab_delimited";
        return line(titles, m_layout.headerSeparator);
    }

    QString dataLine() {
        QStringList fields;
        for (const RandomColumns::Column& column : m_columns.all())
            fields << column.field(m_random);
        if (m_layout.decimalComma)
            for (QString& field : fields)
                field.replace(u'.', u',');
        if (m_random.oneIn(m_layout.oddness * 3))
            fields.resize(m_random.between(1, static_cast<int>(fields.size())));
        if (m_random.oneIn(m_layout.oddness * 3))
            fields.insert(m_random.between(0, static_cast<int>(fields.size())),
                          m_random.oneOf({"x", "0.5", ""}));
        if (m_layout.endsInList)
            fields += m_random.oneOf<QStringList>({{"A"}, {"A", "B"}, {}});
        return rowName() + line(fields, m_layout.separator);
    }

    QString rowName() {
        if (m_layout.rowNames.isNull())
            return {};
        const QString name = m_layout.rowNames + QString::number(++m_line);
        return (name.startsWith(u'"') ? name + u'"' : name) + m_layout.separator;
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
        m_columns.startFile();
        const QString header = m_mark + headerLine();
        QString content = preamble() + (m_hasHeader ? header + m_layout.lineEnd : QString());
        const int oddness = m_layout.oddness * 3;
        for (int lines = m_random.oneOf({1, 5, 12, 12, 40, 120}); lines > 0; --lines) {
            if (m_random.oneIn(oddness))
                content += m_random.oneOf({QString(), headerLine(), QStringLiteral("# note"),
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
    RandomTable m_table;
    RandomColumns m_columns;
    QString m_mark; // before the first title
    bool m_hasHeader = true;
    int m_line = 0; // of those with row names
};

} // namespace

RandomTable randomTable(Random& random) {
    return Maker(random).make();
}
