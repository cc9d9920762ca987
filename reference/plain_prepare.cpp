#include "plain_prepare.h"

#include "plain_chromosomes.h"
#include "plain_columns.h"
#include "plain_layout.h"
#include "plain_p.h"
#include "plain_titles.h"
#include "title_table.h"

#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <cmath>

namespace plain {

namespace {

struct Failure {
    RefusalCode code;
};

struct Row {
    int input = 0;
    qint64 line = 0;
    QString text;
    QStringList fields;
    QString reason; // why it is dropped
    QString chromosome;
    qint64 position = 0;
    PText p;
};

struct Table {
    Separator separator = Separator::Tab;
    qsizetype header = -1; // from 0
    QStringList titles;
    Columns columns;
};

QList<QStringList> fieldsOfBody(const QStringList& body, Separator separator) {
    QList<QStringList> rows;
    for (const QString& line : body)
        if (!isEmpty(line) && !isComment(line))
            rows << fieldsOf(line, separator);
    return rows;
}

constexpr Separator separators[] = {Separator::Tab,        Separator::Comma,
                                    Separator::Semicolon,  Separator::Spaces,
                                    Separator::WideSpaces, Separator::WhiteSpace};

// How much a line misses to be a header; the roles are looked for in this order.
int missingOf(RefusalCode code) {
    switch (code) {
    case RefusalCode::NoChromosome:
        return 3;
    case RefusalCode::NoPosition:
        return 2;
    case RefusalCode::NoPValue:
    case RefusalCode::UnknownColumn:
        return 1;
    default:
        return 0;
    }
}

bool endsEmpty(const QStringList& body, Separator separator) {
    return std::all_of(body.begin(), body.end(), [separator](const QString& line) {
        const QStringList fields = fieldsOf(line, separator);
        return isEmpty(line) || isComment(line) || fields.isEmpty() || fields.last().isEmpty();
    });
}

// Finds the header, and with it the separator and the columns.
class HeaderSearch {
public:
    HeaderSearch(const QStringList& lines, const PrepareOptions& options)
        : m_lines(lines), m_options(options) {}

    Table find() {
        if (m_options.noHeader) {
            if (tryLine(-1, {}))
                return m_table;
            throw Failure{m_failure.value_or(RefusalCode::NotATable)};
        }
        qsizetype lastDoubled = -1;
        for (qsizetype i = 0; i < qMin<qsizetype>(m_lines.size(), 1000); ++i) {
            if (m_lines[i].startsWith("##"))
                lastDoubled = i;
            else if (!isEmpty(m_lines[i]) && tryLine(i, m_lines[i]))
                return m_table;
        }
        if (lastDoubled >= 0 && tryLine(lastDoubled, m_lines[lastDoubled].mid(2)))
            return m_table;
        throw Failure{m_failure.value_or(RefusalCode::NotATable)};
    }

private:
    bool tryLine(qsizetype line, const QString& header) {
        for (const Separator separator : separators)
            if (trySeparator(line, header, separator))
                return true;
        return false;
    }

    bool trySeparator(qsizetype line, const QString& header, Separator separator) {
        QStringList titles = line < 0 ? QStringList() : fieldsOf(header, separator);
        const QStringList body = m_lines.mid(line + 1);
        if (titles.size() > 1 && titles.last().isEmpty() &&
            (!bodyAgrees(body, separator, titles.size()) || endsEmpty(body, separator)))
            titles.removeLast();
        const auto first = std::find_if(body.begin(), body.end(), [](const QString& text) {
            return !isEmpty(text) && !isComment(text);
        });
        if (first == body.end())
            return false;
        const qsizetype columns = line < 0 ? fieldsOf(*first, separator).size() : titles.size();
        if (!bodyAgrees(body, separator, columns))
            return false;
        const QList<QStringList> rows = fieldsOfBody(body, separator);
        const auto chosen = columnsOf(titles, rows, m_options);
        if (const auto* code = std::get_if<RefusalCode>(&chosen)) {
            if (missingOf(*code) == 0)
                throw Failure{*code};
            if (columns > 1 && (!m_failure || missingOf(*code) < missingOf(*m_failure)))
                m_failure = *code;
            return false;
        }
        m_table = {separator, line, titles, std::get<Columns>(chosen)};
        return true;
    }

    const QStringList& m_lines;
    const PrepareOptions& m_options;
    std::optional<RefusalCode> m_failure;
    Table m_table;
};

QString withDecimalPoint(const QString& text, Separator separator) {
    if (separator == Separator::Semicolon && text.count(u',') == 1)
        return QString(text).replace(u',', u'.');
    return text;
}

QStringList normalTitles(QStringList titles) {
    for (QString& title : titles)
        title = normalTitle(title);
    return titles;
}

class Preparation {
public:
    explicit Preparation(const PrepareOptions& options) : m_options(options) {}

    Prepared run(const QList<QByteArray>& inputs) {
        for (int input = 0; input < inputs.size(); ++input)
            read(input, linesOf(inputs[input]));
        dropLines();
        judgeTests();
        judgeWhere();
        judgeLogs();
        for (Row& row : m_rows)
            if (row.reason.isEmpty())
                readPlace(row);
        for (Row& row : m_rows)
            if (row.fields.size() >= fieldsNeeded())
                row.p = readPOf(row);
        judgeP();
        judgePairs();
        judgePositions();
        dropByP();
        judgeTraits();
        replaceZeros();
        nameChromosomes();
        dropSmallChromosomes();
        return result();
    }

private:
    void read(int input, const QStringList& lines) {
        const Table table = HeaderSearch(lines, m_options).find();
        if (input == 0)
            m_table = table;
        else if (normalTitles(table.titles) != normalTitles(m_table.titles))
            throw Failure{RefusalCode::DifferentColumns};
        for (qsizetype i = table.header + 1; i < lines.size(); ++i) {
            Row row;
            row.input = input;
            row.line = i + 1;
            row.text = lines[i];
            row.fields = fieldsOf(lines[i], table.separator);
            if (table.header >= 0 &&
                (row.text == lines[table.header] || row.fields == table.titles))
                row.reason = "repeated-header";
            m_rows << row;
        }
    }

    QList<int> columnsNeeded() const {
        const Columns& c = m_table.columns;
        return {c.chromosome, c.position, c.joined, c.p, c.p < 0 ? c.log : -1, c.test};
    }

    qsizetype fieldsNeeded() const {
        int last = 0;
        for (const int column : columnsNeeded())
            last = std::max(last, column);
        return last + 1;
    }

    // Between runs of spaces nothing says which field a line lacks, or has too many of.
    bool hasOddFields(const Row& row) const {
        const bool isRun = m_table.separator == Separator::Spaces ||
                           m_table.separator == Separator::WideSpaces ||
                           m_table.separator == Separator::WhiteSpace;
        return isRun && !m_table.titles.isEmpty() && row.fields.size() != m_table.titles.size();
    }

    // A prepared table keeps its columns as they stand.
    int nameColumn() const { return m_table.columns.isPrepared ? -1 : m_table.columns.name; }

    void dropLines() {
        for (Row& row : m_rows) {
            if (!row.reason.isEmpty())
                continue;
            if (isEmpty(row.text))
                row.reason = "empty";
            else if (isComment(row.text))
                row.reason = "comment";
            else if (row.fields.size() < fieldsNeeded() || hasOddFields(row))
                row.reason = "short-line";
        }
    }

    QString field(const Row& row, int column) const {
        return column < 0 ? QString() : row.fields.value(column);
    }

    QString placeOf(const Row& row) const {
        const Columns& c = m_table.columns;
        return QStringList{field(row, c.chromosome), field(row, c.position), field(row, c.joined),
                           field(row, c.name)}
            .join(u'\t');
    }

    // Whether a place occurs in two of the rows; with a column, only under different values of it.
    bool aPlaceComesTwice(int differentColumn) const {
        QMap<QString, QString> seen;
        for (const Row& row : m_rows) {
            if (!row.reason.isEmpty())
                continue;
            const QString place = placeOf(row);
            const QString value = field(row, differentColumn);
            if (seen.contains(place) && (differentColumn < 0 || seen[place] != value))
                return true;
            seen.insert(place, value);
        }
        return false;
    }

    QSet<QString> valuesOf(int column) const {
        QSet<QString> values;
        for (const Row& row : m_rows)
            if (row.reason.isEmpty())
                values << field(row, column);
        return values;
    }

    void keepOnly(int column, const QString& value) {
        for (Row& row : m_rows)
            if (row.reason.isEmpty() && field(row, column) != value)
                row.reason = "wrong-test";
    }

    void judgeTests() {
        const int column = m_table.columns.test;
        if (column < 0 && m_options.testName)
            throw Failure{RefusalCode::UnknownColumn};
        if (column < 0)
            return;
        if (m_options.testName)
            return keepOnly(column, QString::fromLatin1(*m_options.testName));
        const QSet<QString> tests = valuesOf(column);
        if (tests.size() > 1 && tests.contains("ADD"))
            keepOnly(column, "ADD");
        else if (tests.size() > 1 && aPlaceComesTwice(-1))
            throw Failure{RefusalCode::SeveralTests};
    }

    void judgeWhere() {
        for (const auto& [title, value] : m_options.where) {
            int column = static_cast<int>(m_table.titles.indexOf(QString::fromLatin1(title)));
            if (column < 0)
                column = title.toInt() - 1;
            if (column < 0 || (!m_table.titles.isEmpty() && column >= m_table.titles.size()))
                throw Failure{RefusalCode::UnknownColumn};
            keepOnly(column, QString::fromLatin1(value));
        }
    }

    void judgeTraits() const {
        for (const int column : m_table.columns.traits)
            if (aPlaceComesTwice(column))
                throw Failure{RefusalCode::SeveralTraits};
    }

    // Which sign a logarithm has.
    void judgeLogs() {
        Columns& c = m_table.columns;
        if (c.log < 0 || c.isPrepared || c.logScaleIsGiven)
            return;
        bool isAnyAbove = false, isAnyBelow = false;
        for (const Row& row : m_rows) {
            const Decimal number = decimal(withDecimalPoint(field(row, c.log), m_table.separator));
            if (row.reason.isEmpty() && number.isNumber && !number.isZero)
                (number.isNegative ? isAnyBelow : isAnyAbove) = true;
        }
        if (isAnyAbove && isAnyBelow)
            throw Failure{RefusalCode::MixedSigns};
        if (isAnyBelow && c.logSaysMinus)
            throw Failure{RefusalCode::LooksLikeLog};
        if (isAnyBelow)
            c.logScale = PScale::Log10;
    }

    void readPlace(Row& row) const {
        const Columns& c = m_table.columns;
        QString position = field(row, c.position);
        row.chromosome = field(row, c.chromosome);
        if (c.joined >= 0) {
            const auto place = joinedPlace(field(row, c.joined));
            if (!place) {
                row.reason = "joined-id-unreadable";
                return;
            }
            row.chromosome = place->chromosome;
            position = place->position;
        }
        if (c.chromosome < 0 && c.joined < 0)
            row.chromosome = QString::fromLatin1(m_options.chromosomeValue.value_or("NA"));
        const QStringList nowhere{"0", "-9"};
        if (isMissing(row.chromosome) ||
            (nowhere.contains(row.chromosome) && nowhere.contains(position)))
            row.reason = "chromosome-missing";
        else
            row.reason = readPosition(position, row.position);
    }

    // The reason for which there is no position.
    QString readPosition(const QString& text, qint64& position) const {
        if (isMissing(text))
            return "position-missing";
        QString number = withDecimalPoint(text, m_table.separator);
        static const QRegularExpression thousands("^\\d{1,3}(,\\d{3})+$");
        if (m_table.separator == Separator::Comma && thousands.match(number).hasMatch())
            number.remove(u',');
        const Decimal parsed = decimal(number);
        if (!parsed.isNumber || parsed.value != std::floor(parsed.value))
            return "position-not-whole";
        const bool countsFrom0 = m_options.zeroBased;
        const long double value = parsed.value + (countsFrom0 ? 1 : 0);
        if (value < 1)
            return "position-not-positive";
        if (value > 2147483647.0L)
            return "position-too-large";
        position = static_cast<qint64>(value);
        return {};
    }

    void judgePositions() const {
        qint64 all = 0, broken = 0, byOne = 0;
        for (const Row& row : m_rows) {
            if (row.fields.size() < fieldsNeeded() || m_table.columns.joined >= 0)
                continue;
            const bool hasNone = row.reason == u"position-missing";
            if (row.reason == u"position-not-whole" &&
                decimal(withDecimalPoint(field(row, m_table.columns.position), m_table.separator))
                    .isNumber)
                ++broken;
            all += row.reason.isEmpty() || (row.reason.startsWith("position") && !hasNone) ? 1 : 0;
            if (row.reason.isEmpty() &&
                field(row, m_table.columns.end).toLongLong() == row.position + 1)
                ++byOne;
        }
        if (broken * 100 > all)
            throw Failure{RefusalCode::GeneticMap};
        const bool isFrom0 =
            m_table.columns.countsFrom0 || (m_table.columns.end >= 0 && byOne * 2 > all);
        if (isFrom0 && !m_options.zeroBased)
            throw Failure{RefusalCode::ZeroBased};
    }

    PText readPOf(const Row& row) const {
        const Columns& c = m_table.columns;
        const QString logText = withDecimalPoint(field(row, c.log), m_table.separator);
        if (c.p < 0)
            return readLog(logText, c.logScale);
        PText p = readP(withDecimalPoint(field(row, c.p), m_table.separator));
        if (c.isPrepared && p.kind == PText::Good)
            p.log = logText;
        else if (c.log >= 0 && p.isOnlyText) {
            const PText log = readLog(logText, c.logScale);
            if (log.kind == PText::Good)
                return log;
        }
        return p;
    }

    void judgeP() const {
        const Columns& c = m_table.columns;
        if (c.p < 0)
            return;
        qint64 all = 0, above = 0, below = 0, atMost0 = 0, texts = 0;
        for (const Row& row : m_rows) {
            const Decimal number = decimal(
                withDecimalPoint(field(row, c.p), m_table.separator).remove(u'<').trimmed());
            if (!row.reason.isEmpty() && !row.reason.startsWith("position") &&
                !row.reason.startsWith("chromosome") && row.reason != u"wrong-test")
                continue;
            if (row.p.kind == PText::NotANumber)
                ++texts;
            if (!number.isNumber)
                continue;
            ++all;
            above += !number.isNegative && number.value > 1.000001L ? 1 : 0;
            below += number.isNegative && !number.isZero ? 1 : 0;
            atMost0 += number.isNegative || number.isZero ? 1 : 0;
        }
        if (texts > all)
            throw Failure{RefusalCode::NoPValue};
        if (below > 0 && atMost0 == all)
            throw Failure{RefusalCode::LooksLikeLog};
        if (above * 100 > all)
            throw Failure{RefusalCode::LooksLikeNegLog10};
        if ((above + below) * 100 > all)
            throw Failure{RefusalCode::OutOfRange};
    }

    void judgePairs() const {
        const Columns& c = m_table.columns;
        if (c.p < 0 || c.log < 0 || c.isPrepared)
            return;
        qint64 all = 0, apart = 0;
        for (const Row& row : m_rows) {
            const PText p = readP(withDecimalPoint(field(row, c.p), m_table.separator));
            const PText log =
                readLog(withDecimalPoint(field(row, c.log), m_table.separator), c.logScale);
            if (row.fields.size() < fieldsNeeded() || p.kind != PText::Good ||
                log.kind != PText::Good || p.isOnlyText || p.negLog10 > 323 ||
                field(row, c.p).startsWith(u'<'))
                continue;
            ++all;
            const long double difference = std::abs(p.negLog10 - log.negLog10);
            if (difference > 0.01L && difference > 0.01L * std::abs(p.negLog10))
                ++apart;
        }
        if (apart * 100 > all)
            throw Failure{RefusalCode::PairDisagrees};
    }

    void dropByP() {
        for (Row& row : m_rows) {
            if (!row.reason.isEmpty() && !row.reason.startsWith("position"))
                continue;
            if (row.p.kind == PText::Missing)
                row.reason = "p-missing";
            if (row.p.kind == PText::NotANumber)
                row.reason = "p-not-a-number";
            if (row.p.kind == PText::OutOfRange)
                row.reason = "p-out-of-range";
        }
    }

    void replaceZeros() {
        std::optional<PText> smallest;
        for (const Row& row : m_rows)
            if (row.reason.isEmpty() && row.p.kind == PText::Good &&
                (!smallest || row.p.negLog10 > smallest->negLog10))
                smallest = row.p;
        for (Row& row : m_rows) {
            if (!row.reason.isEmpty() || row.p.kind != PText::Zero)
                continue;
            if (m_options.zeroP == ZeroP::Fail)
                throw Failure{RefusalCode::ZeroP};
            if (m_options.zeroP == ZeroP::Drop || !smallest)
                row.reason = "p-zero";
            else
                row.p = *smallest;
        }
    }

    QString nameOf25() const {
        const QStringList& t = m_table.titles;
        const bool isFirstPlink = t.value(0) == u"CHR" && t.contains("SNP") && t.contains("BP") &&
                                  (t.contains("NMISS") || t.contains("F_U") || t.contains("TEST"));
        if (isFirstPlink || (t.contains("#CHROM") && t.contains("OBS_CT")))
            return "XY";
        return t.contains("base_pair_location") && t.contains("effect_allele") ? "MT" : "";
    }

    void nameChromosomes() {
        QMap<QString, QString> firstSpelling;
        for (const Row& row : m_rows)
            if (row.reason.isEmpty() && !firstSpelling.contains(chromosomeKey(row.chromosome)))
                firstSpelling[chromosomeKey(row.chromosome)] = row.chromosome;
        const QStringList all = firstSpelling.values();
        for (Row& row : m_rows)
            if (row.reason.isEmpty())
                row.chromosome = writtenName(firstSpelling[chromosomeKey(row.chromosome)], all,
                                             nameOf25(), m_options.chromosomeNames);
    }

    void dropSmallChromosomes() {
        QMap<QString, qint64> markers;
        for (const Row& row : m_rows)
            if (row.reason.isEmpty())
                ++markers[row.chromosome];
        for (Row& row : m_rows)
            if (row.reason.isEmpty() && markers[row.chromosome] < m_options.minMarkers)
                row.reason = "small-chromosome";
    }

    QList<int> otherColumns() const {
        const Columns& c = m_table.columns;
        QList<int> others;
        for (int i = 0; i < m_table.titles.size(); ++i)
            if (i != c.chromosome && i != c.position && i != c.p &&
                ((c.p >= 0 && !c.isPrepared) || i != c.log) && i != nameColumn())
                others << i;
        return m_options.allColumns || c.isPrepared ? others : QList<int>();
    }

    QByteArray headerLine() const {
        QStringList titles;
        for (const std::string_view title : title_table::prepared)
            titles << fromData(title);
        if (nameColumn() >= 0)
            titles << m_table.titles.value(nameColumn(), "SNP");
        for (const int column : otherColumns())
            titles << m_table.titles[column];
        if (m_options.lineNumbers)
            titles << "Line";
        return titles.join(u'\t').toLatin1() + '\n';
    }

    QByteArray rowLine(const Row& row) const {
        QStringList texts{row.chromosome, QString::number(row.position), row.p.p, row.p.log};
        if (nameColumn() >= 0)
            texts << field(row, nameColumn());
        for (const int column : otherColumns())
            texts << field(row, column);
        if (m_options.lineNumbers)
            texts << QString::number(row.line);
        return texts.join(u'\t').toLatin1() + '\n';
    }

    Prepared result() const {
        Prepared prepared;
        QList<Row> kept;
        for (const Row& row : m_rows) {
            if (row.reason.isEmpty()) {
                kept << row;
                continue;
            }
            ++prepared.dropped[row.reason];
            if (row.input == 0)
                prepared.reasonOfLine[row.line] = row.reason;
        }
        std::stable_sort(kept.begin(), kept.end(), [](const Row& a, const Row& b) {
            const QString keyA = chromosomeKey(a.chromosome), keyB = chromosomeKey(b.chromosome);
            return keyA == keyB ? a.position < b.position : comesBefore(keyA, keyB);
        });
        prepared.table = headerLine();
        for (const Row& row : kept)
            prepared.table += rowLine(row);
        return prepared;
    }

    const PrepareOptions& m_options;
    Table m_table;
    QList<Row> m_rows;
};

} // namespace

Prepared prepare(const QList<QByteArray>& inputs, const PrepareOptions& options) {
    Q_ASSERT_X(options.pSource == PSource::Column && options.positionsFile.isEmpty() &&
                   !options.sample,
               "prepare", "the plain version does not do this");
    try {
        return Preparation(options).run(inputs);
    } catch (const Failure& failure) {
        Prepared refused;
        refused.refused = failure.code;
        return refused;
    }
}

} // namespace plain
