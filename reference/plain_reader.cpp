#include "plain_reader.h"

#include "plain_numbers.h"

#include <QIODevice>
#include <QTextStream>
#include <cmath>
#include <cstdint>
#include <optional>

namespace plain {

namespace {

struct Line {
    QString chromosome, position, pValue;
};

// A fault shows the first 100 characters of what it is about.
QString shown(const QString& text) {
    return text.left(100);
}

class Lines {
public:
    explicit Lines(QIODevice& device) : m_device(device) {}

    std::optional<Fault> open() {
        if (!m_device.open(QIODevice::ReadOnly | QIODevice::Text))
            return Fault{FaultCode::CannotOpenFile};
        m_text.setDevice(&m_device);
        m_text.setEncoding(QStringConverter::System);
        if (m_text.atEnd())
            return std::nullopt;
        const QString firstLine = m_text.readLine();
        if (firstLine.contains(u'\t'))
            m_delimiter = u'\t';
        else if (firstLine.contains(u' '))
            m_delimiter = u' ';
        else if (firstLine.contains(u','))
            m_delimiter = u',';
        else
            return Fault{FaultCode::UnknownDelimiter, 1, {}, shown(firstLine)};
        const QStringList fields = firstLine.split(m_delimiter);
        if (fields.size() < 3)
            return Fault{FaultCode::TooFewColumns, 1, {}, shown(firstLine)};
        bool hasHeader = false;
        for (const QString& field : fields)
            hasHeader = hasHeader || !isNumeric(field);
        m_text.seek(0);
        return hasHeader ? readHeader() : std::nullopt;
    }

    bool atEnd() { return m_text.atEnd(); }

    // No value for an empty line.
    Result<std::optional<Line>> next() {
        const QString text = m_text.readLine();
        ++m_line;
        if (text.isEmpty())
            return std::optional<Line>();
        const QStringList fields = text.split(m_delimiter);
        int firstMissing = 0;
        for (const int column : {m_chromosomeColumn, m_positionColumn, m_pValueColumn})
            if (column > fields.size() && (firstMissing == 0 || column < firstMissing))
                firstMissing = column;
        if (firstMissing > 0)
            return Fault{FaultCode::IncorrectColumns, m_line, nameOf(firstMissing), shown(text)};
        return std::optional<Line>(Line{fields[m_chromosomeColumn - 1],
                                        fields[m_positionColumn - 1], fields[m_pValueColumn - 1]});
    }

    // Appends the point of a line; false where the line has none.
    Result<bool> appendPoint(const Line& line, Points& points) const {
        if (line.pValue == u"NA")
            return false;
        bool ok = false;
        const double p = line.pValue.toDouble(&ok);
        if (!ok)
            return Fault{FaultCode::NonNumericPValue, m_line, nameOf(m_pValueColumn),
                         shown(line.pValue)};
        if (p == 0.0)
            return false;
        points.values.append(-std::log10(p));
        const int position = line.position.toInt(&ok, 10);
        if (!ok)
            return Fault{FaultCode::NonIntegerPosition, m_line, nameOf(m_positionColumn),
                         shown(line.position)};
        points.positions.append(position);
        return true;
    }

private:
    QString nameOf(int column) const {
        return m_titles.isEmpty() ? QString::number(column) : shown(m_titles[column - 1]);
    }

    static bool isNumeric(const QString& field) {
        bool isInteger = false, isReal = false;
        field.toInt(&isInteger, 10);
        field.toDouble(&isReal);
        return isInteger || isReal;
    }

    std::optional<Fault> readHeader() {
        m_chromosomeColumn = m_positionColumn = m_pValueColumn = -1;
        const QString line = m_text.readLine();
        ++m_line;
        m_titles = line.split(m_delimiter);
        for (int column = static_cast<int>(m_titles.size()); column >= 1; --column) {
            const QString& title = m_titles[column - 1];
            if (title.contains(QLatin1String("pos"), Qt::CaseInsensitive))
                m_positionColumn = column;
            if (title.contains(QLatin1String("pval"), Qt::CaseInsensitive) ||
                title.contains(QLatin1String("p-val"), Qt::CaseInsensitive) || title == u"P" ||
                title == u"p")
                m_pValueColumn = column;
            if (title.contains(QLatin1String("chr"), Qt::CaseInsensitive) ||
                title.contains(QLatin1String("some"), Qt::CaseInsensitive) ||
                title.contains(QLatin1String("id"), Qt::CaseInsensitive))
                m_chromosomeColumn = column;
        }
        if (m_positionColumn >= 1 && m_pValueColumn >= 1 && m_chromosomeColumn >= 1)
            return std::nullopt;
        return Fault{FaultCode::IncorrectColumns, 1, {}, shown(line)};
    }

    QIODevice& m_device;
    QTextStream m_text;
    QChar m_delimiter;
    QStringList m_titles; // empty without a header
    qint64 m_line = 0;    // the last one read
    int m_chromosomeColumn = 1;
    int m_positionColumn = 2;
    int m_pValueColumn = 3;
};

// Takes one label per point. Expects positions in units of 100 base pairs and turns them into
// genome coordinates.
QList<Chromosome> layEndToEnd(QList<int>& positions, const QStringList& labels) {
    QList<Chromosome> chromosomes{{labels[0], 0, 0, 0, 0, 0}};
    const QList<int> quotients = positions;
    const int last = static_cast<int>(positions.size()) - 1;
    std::int64_t origin = quotients[0], offset = 0;
    for (int i = 0; i <= last; ++i) {
        if (i > 0 && labels[i] != labels[i - 1]) {
            chromosomes.last().endIndex = i;
            chromosomes.append({labels[i], i, i + 1, 0, 0, 0});
            origin = quotients[i];
            offset = positions[i - 1];
        }
        positions[i] = wrapped(quotients[i] - origin + 1 + offset);
    }
    chromosomes.last().endIndex = last;
    for (Chromosome& chromosome : chromosomes) {
        const int start = chromosome.startIndex;
        chromosome.startValue = positions[start > last ? last : start];
        chromosome.endValue = positions[chromosome.endIndex];
    }
    return chromosomes;
}

} // namespace

Result<GenomeScan> scanGenome(QIODevice& device) {
    Lines lines(device);
    if (const auto fault = lines.open())
        return *fault;
    GenomeScan scan;
    QStringList labels;
    while (!lines.atEnd()) {
        const auto next = lines.next();
        if (const Fault* fault = std::get_if<Fault>(&next))
            return *fault;
        const std::optional<Line>& line = std::get<0>(next);
        if (!line)
            continue;
        const auto appended = lines.appendPoint(*line, scan.points);
        if (const Fault* fault = std::get_if<Fault>(&appended))
            return *fault;
        if (!std::get<bool>(appended))
            continue;
        scan.points.positions.last() /= 100;
        labels.append(line->chromosome);
    }
    if (labels.size() <= 1)
        return Fault{FaultCode::TooFewGenomePoints};
    scan.chromosomes = layEndToEnd(scan.points.positions, labels);
    return scan;
}

Result<Points> loadChromosome(QIODevice& device, const QString& label) {
    Lines lines(device);
    if (const auto fault = lines.open())
        return *fault;
    Points points;
    QString previousLabel;
    while (!lines.atEnd()) {
        const auto next = lines.next();
        if (const Fault* fault = std::get_if<Fault>(&next))
            return *fault;
        const std::optional<Line>& line = std::get<0>(next);
        if (!line)
            continue;
        if (previousLabel == label && line->chromosome != label)
            break;
        previousLabel = line->chromosome;
        if (line->chromosome != label)
            continue;
        const auto appended = lines.appendPoint(*line, points);
        if (const Fault* fault = std::get_if<Fault>(&appended))
            return *fault;
    }
    if (points.positions.size() <= 1)
        return Fault{FaultCode::TooFewChromosomePoints, 0, {}, label};
    return points;
}

} // namespace plain
