#include "plot_data.h"

#include "box.h"
#include "chromosome_load.h"
#include "genome_scan.h"
#include "utf8.h"

#include <QFile>
#include <limits>
#include <utility>

namespace {

// What is wrong with a file that the window does not open, and what to do.
QString words(const Fault& fault) {
    switch (fault.code) {
    case FaultCode::CannotOpenFile:
        return QStringLiteral("cannot be read");
    case FaultCode::UnknownDelimiter:
        return QStringLiteral("there is no tab, space or comma that parts columns");
    case FaultCode::TooFewColumns:
        return QStringLiteral("there are fewer than three columns");
    case FaultCode::IncorrectColumns:
        return fault.column.isEmpty()
                   ? QStringLiteral(
                         "no titles that the window knows for chromosome, position and p")
                   : QStringLiteral("the line ends before column %1").arg(fault.column);
    case FaultCode::NonNumericPValue:
        return QStringLiteral("%1 is \"%2\", which is no number").arg(fault.column, fault.text);
    case FaultCode::NonIntegerPosition:
        return QStringLiteral("%1 is \"%2\", which is no whole number")
            .arg(fault.column, fault.text);
    case FaultCode::TooFewGenomePoints:
        return QStringLiteral("there are fewer than two markers to draw");
    case FaultCode::TooFewChromosomePoints:
        return QStringLiteral("chromosome %1 has fewer than two markers to draw").arg(fault.text);
    }
    Q_UNREACHABLE();
}

Failure failureOf(const Fault& fault, const QString& name) {
    const QString place = fault.line > 0 ? name + u':' + QString::number(fault.line) : name;
    const bool isUnreadable = fault.code == FaultCode::CannotOpenFile;
    return {isUnreadable ? StatusUnreadable : StatusNotUnderstood,
            place + QLatin1String(": ") + words(fault) +
                (isUnreadable ? QLatin1String(".")
                              : QLatin1String(". pelmark-tools check says more; without --as-is, "
                                              "many other files can be read."))};
}

// The place in the list of the chromosome to show, or -1 for the whole genome.
std::variant<qsizetype, Failure> chosen(const QStringList& labels, const QString& name,
                                        const PlotRequest& request) {
    constexpr qsizetype shown = 30;
    if (request.chromosome) {
        const qsizetype found = labels.indexOf(QString::fromUtf8(*request.chromosome));
        if (found >= 0)
            return found;
        return Failure{StatusWrongCall,
                       QStringLiteral("%1: has no chromosome \"%2\". Choose one of: %3%4")
                           .arg(name, QString::fromUtf8(*request.chromosome),
                                labels.mid(0, shown).join(QLatin1String(", ")),
                                QLatin1String(labels.size() > shown ? " ..." : ""))};
    }
    if (labels.size() == 1 && !request.quantiles)
        return 0;
    if (request.isOfOneChromosome())
        return Failure{StatusWrongCall,
                       QStringLiteral("%1: has several chromosomes; --range, --mark and --join are "
                                      "for one. Choose it with --chromosome: %2%3")
                           .arg(name, labels.mid(0, shown).join(QLatin1String(", ")),
                                QLatin1String(labels.size() > shown ? " ..." : ""))};
    return -1;
}

PlotData chromosomeData(Points points, const QString& label, const PlotRequest& request) {
    PlotData data{false, {}, std::move(points), {}, QStringLiteral("chromosome ") + label};
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (request.range) {
        data.points = pointsInside(std::move(data.points),
                                   {request.range->low, request.range->high, -infinity, infinity});
        data.what += QStringLiteral(":%1-%2").arg(request.range->low).arg(request.range->high);
    }
    return data;
}

PlotData genomeData(GenomeScan scan) {
    return {true,
            std::move(scan.chromosomes),
            std::move(scan.points),
            {},
            QStringLiteral("whole genome")};
}

// The points start at a row of the table, and all of the named rows are among them.
PlotData withLabels(PlotData data, const QList<NamedRow>& named, size_t begin) {
    for (const NamedRow& each : named) {
        const auto i = static_cast<qsizetype>(each.row - begin);
        data.labels.append({data.points.positions[i], data.points.values[i], each.name});
    }
    return data;
}

QList<Chromosome> chromosomesOf(const ScanTable& table) {
    QList<Chromosome> chromosomes;
    for (const ScanTable::Chromosome& chromosome : table.chromosomes)
        chromosomes.append({.label = fromUtf8({chromosome.name.constData(),
                                               static_cast<size_t>(chromosome.name.size())}),
                            .firstPoint = static_cast<qsizetype>(chromosome.begin)});
    return chromosomes;
}

Points pointsOf(const ScanTable& table, size_t begin, size_t end) {
    if (begin == 0 && end == table.size())
        return table.points;
    const auto first = static_cast<qsizetype>(begin), count = static_cast<qsizetype>(end - begin);
    return {table.points.positions.mid(first, count), table.points.values.mid(first, count)};
}

QStringList labelsOf(const QList<Chromosome>& chromosomes) {
    QStringList labels;
    for (const Chromosome& chromosome : chromosomes)
        labels.append(chromosome.label);
    return labels;
}

} // namespace

std::variant<PlotData, Failure> plotData(ScanTable table, const QList<NamedRow>& named,
                                         const QString& name, const PlotRequest& request) {
    QList<Chromosome> chromosomes = chromosomesOf(table);
    const auto choice = chosen(labelsOf(chromosomes), name, request);
    if (const auto* failure = std::get_if<Failure>(&choice))
        return *failure;
    const qsizetype c = std::get<qsizetype>(choice);
    const size_t begin = c < 0 ? 0 : table.chromosomes[c].begin;
    const size_t end = c < 0 ? table.size() : table.chromosomes[c].end;
    if (end - begin < 2)
        return Failure{StatusNotUnderstood, name + QLatin1String(": ") +
                                                words({c < 0 ? FaultCode::TooFewGenomePoints
                                                             : FaultCode::TooFewChromosomePoints,
                                                       0,
                                                       {},
                                                       c < 0 ? QString() : chromosomes[c].label}) +
                                                u'.'};
    Points points = pointsOf(table, begin, end);
    // The window's own pictures show what a double holds; quantiles are of the true values.
    for (size_t row = begin; request.quantiles && row < end; ++row)
        points.values[static_cast<qsizetype>(row - begin)] = table.negLog10(row);
    table = {};
    if (c < 0)
        return withLabels(genomeData(layEndToEnd(std::move(chromosomes), std::move(points))), named,
                          begin);
    PlotData whole = withLabels({false, {}, std::move(points), {}, {}}, named, begin);
    PlotData data = chromosomeData(std::move(whole.points), chromosomes[c].label, request);
    data.labels = std::move(whole.labels);
    return data;
}

std::variant<PlotData, Failure> plotDataAsIs(const QString& path, const QString& name,
                                             const PlotRequest& request) {
    QFile file(path);
    Result<GenomeScan> scan = scanGenome(file);
    file.close();
    if (const auto* fault = std::get_if<Fault>(&scan))
        return failureOf(*fault, name);
    auto& genome = std::get<GenomeScan>(scan);
    const auto choice = chosen(labelsOf(genome.chromosomes), name, request);
    if (const auto* failure = std::get_if<Failure>(&choice))
        return *failure;
    const qsizetype c = std::get<qsizetype>(choice);
    if (c < 0)
        return genomeData(std::move(genome));
    const QString label = genome.chromosomes[c].label;
    genome = {};
    Result<Points> points = loadChromosome(file, label);
    if (const auto* fault = std::get_if<Fault>(&points))
        return failureOf(*fault, name);
    return chromosomeData(std::get<Points>(std::move(points)), label, request);
}
