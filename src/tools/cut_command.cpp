#include "cut_command.h"

#include "cut_request.h"
#include "cut_words.h"
#include "file_writing.h"
#include "line_copy.h"
#include "scan_command.h"
#include "window_markers.h"

#include <QJsonDocument>
#include <algorithm>
#include <functional>

namespace {

class Cut {
public:
    Cut(const char* name, const Arguments& arguments, Streams& streams)
        : m_name(name), m_arguments(arguments), m_streams(streams),
          m_command(name, arguments, streams) {}

    int run();

private:
    // These return the exit status where the command ends.
    std::optional<int> readScan();
    std::optional<int> matchTables();
    std::optional<int> matchRegions();
    std::optional<int> matchLists();

    void takeTable(size_t i, const TableMatch& match, bool isByWindow);
    void take(const CutPart& part, const std::vector<qint64>& lines);
    std::optional<Failure> aboutMisfit(size_t i, const TableMatch& match);
    std::optional<Failure> aboutLabel(const QString& what, const QByteArray& label);
    qint64 linesBesideMarkers() const;
    CutReport report();
    int write();

    // Input 0 is the result file; tables and lists follow.
    const QString& nameOf(size_t input) {
        return m_command.inputs().names()[static_cast<qsizetype>(input)];
    }
    const QString& scanPath() { return m_command.inputs().paths()[0]; }

    const char* const m_name;
    const Arguments& m_arguments;
    Streams& m_streams;
    ScanCommand m_command;
    CutRequest m_request;
    ScanTable m_scan;
    QList<CutPart> m_parts;
    LineChoice m_choice;
};

int Cut::run() {
    if (const auto status = readRequest(m_arguments, m_command, m_request))
        return *status;
    if (const auto failure = m_command.openOutputs({"--json"}))
        return m_command.end(*failure);
    for (const auto& step :
         {&Cut::readScan, &Cut::matchTables, &Cut::matchRegions, &Cut::matchLists})
        if (const std::optional<int> status = (this->*step)())
            return *status;
    return write();
}

std::optional<int> Cut::readScan() {
    const auto options = m_command.readOptions();
    if (const auto* failure = std::get_if<Failure>(&options))
        return m_command.end(*failure);
    auto scan = readScanTable(scanPath(), std::get<PrepareOptions>(options), m_command.progress(),
                              PointCollector::Values::P);
    m_command.clearProgress();
    if (const auto* refusal = std::get_if<Refusal>(&scan))
        return m_command.refuse(*refusal);
    m_scan = std::get<ScanTable>(std::move(scan));
    return std::nullopt;
}

// A table may be of the file as it stands, of which the window shows lines that prepare() leaves
// out or changes. Where a table does not fit, the window's own reading is asked too.
std::optional<int> Cut::matchTables() {
    const std::vector<WantedTable>& tables = m_request.tables;
    for (size_t i = 0; i < tables.size(); ++i)
        if (const auto& label = tables[i].label)
            if (const auto failure = aboutLabel(nameOf(i + 1) + QLatin1Char('@'), *label))
                return m_command.end(*failure);
    const std::vector<TableMatch> matches = ::matchTables(m_scan, tables);
    std::vector<TableMatch> byWindow;
    if (std::any_of(matches.begin(), matches.end(),
                    [](const TableMatch& match) { return match.missing.has_value(); }))
        if (const auto shown = readWindowMarkers(scanPath()))
            byWindow = ::matchTables(*shown, tables);
    for (size_t i = 0; i < tables.size(); ++i) {
        const bool isByWindow = matches[i].missing && !byWindow.empty() && !byWindow[i].missing;
        const TableMatch& match = isByWindow ? byWindow[i] : matches[i];
        if (const auto failure = aboutMisfit(i, match))
            return m_command.end(*failure);
        takeTable(i, match, isByWindow);
    }
    return std::nullopt;
}

void Cut::takeTable(size_t i, const TableMatch& match, bool isByWindow) {
    CutPart part;
    part.kind = CutPart::Kind::Table;
    part.name = nameOf(i + 1);
    part.named = std::ssize(m_request.tables[i].table.rows);
    part.chromosome = match.chromosome;
    part.equal = match.equal;
    part.isByWindow = isByWindow;
    take(part, match.lines);
}

// Why a table does not say which lines are meant.
std::optional<Failure> Cut::aboutMisfit(size_t i, const TableMatch& match) {
    const SavedTable& table = m_request.tables[i].table;
    if (match.missing) {
        const SavedTable::Row& row = table.rows[*match.missing];
        const std::string_view numbers = table.numbers(row);
        QString text = QString::fromUtf8(numbers.data(), std::ssize(numbers));
        text = QStringLiteral("position %1, P %2")
                   .arg(QString::number(row.position),
                        text.replace(QLatin1Char('\t'), QLatin1String(", -log10(P) ")));
        const QString where =
            match.chromosome.isEmpty()
                ? QStringLiteral("%1 has no such marker: %2.").arg(nameOf(0), text)
                : QStringLiteral("chromosome %1 of %2 has %3 of the table's %4 rows, but not this "
                                 "one: %5.")
                      .arg(QString::fromUtf8(match.chromosome), nameOf(0),
                           QString::number(match.lines.size()), QString::number(table.rows.size()),
                           text);
        return Failure{StatusNotUnderstood,
                       QStringLiteral("%1:%2: %3 Give the file that was open in the window, or the "
                                      "one that it was prepared from with the same options.")
                           .arg(nameOf(i + 1), QString::number(row.line), where)};
    }
    constexpr qsizetype shown = 30;
    if (match.fitting.size() < 2)
        return std::nullopt;
    QStringList choices;
    for (const QByteArray& chromosome : match.fitting.mid(0, shown))
        choices.append(nameOf(i + 1) + QLatin1Char('@') + QString::fromUtf8(chromosome));
    return Failure{
        StatusNotUnderstood,
        QStringLiteral("%1: all of its rows are on each of %2 chromosomes. Say which one "
                       "is meant by one of: %3.")
            .arg(nameOf(i + 1), QString::number(match.fitting.size()),
                 choices.join(QLatin1String(", ")))};
}

std::optional<Failure> Cut::aboutLabel(const QString& what, const QByteArray& label) {
    constexpr qsizetype shown = 30;
    if (chromosomeOf(m_scan, label))
        return std::nullopt;
    QByteArrayList names;
    for (const ScanTable::Chromosome& chromosome : m_scan.chromosomes.mid(0, shown))
        names.append(chromosome.name);
    if (names.size() < m_scan.chromosomes.size())
        names.append("...");
    return Failure{StatusWrongCall, QStringLiteral("%1%2: %3 has no chromosome %2. It has: %4.")
                                        .arg(what, QString::fromUtf8(label), nameOf(0),
                                             QString::fromUtf8(names.join(", ")))};
}

std::optional<int> Cut::matchRegions() {
    for (const auto& [text, region] : std::as_const(m_request.regions)) {
        if (const auto failure = aboutLabel(QStringLiteral("--region "), region.label))
            return m_command.end(*failure);
        const size_t chromosome = *chromosomeOf(m_scan, region.label);
        const std::vector<qint64> lines = linesIn(m_scan, chromosome, region);
        CutPart part;
        part.kind = CutPart::Kind::Region;
        part.name = QString::fromUtf8(text);
        part.named = std::ssize(lines);
        part.chromosome = m_scan.chromosomes[static_cast<qsizetype>(chromosome)].name;
        take(part, lines);
    }
    return std::nullopt;
}

std::optional<int> Cut::matchLists() {
    if (m_request.lists.isEmpty())
        return std::nullopt;
    const auto matches = matchNames(scanPath(), m_scan, m_request.lists);
    if (const auto* refusal = std::get_if<Refusal>(&matches))
        return m_command.refuse(*refusal);
    for (size_t i = 0; i < static_cast<size_t>(m_request.lists.size()); ++i) {
        const NameMatch& match = std::get<0>(matches)[i];
        CutPart part;
        part.kind = CutPart::Kind::Names;
        part.name = nameOf(1 + m_request.tables.size() + i);
        part.named = m_request.lists[static_cast<qsizetype>(i)].size();
        part.notFound = match.notFound;
        take(part, match.lines);
    }
    return std::nullopt;
}

void Cut::take(const CutPart& part, const std::vector<qint64>& lines) {
    m_parts.append(part);
    m_parts.last().matched = std::ssize(lines);
    m_choice.lines.insert(m_choice.lines.end(), lines.begin(), lines.end());
}

// How many of the lines named hold no marker of ours: the window alone shows them.
qint64 Cut::linesBesideMarkers() const {
    const std::vector<qint64> markers = m_scan.lines.ascending();
    return std::count_if(m_choice.lines.begin(), m_choice.lines.end(), [&](qint64 line) {
        return !std::binary_search(markers.begin(), markers.end(), line);
    });
}

CutReport Cut::report() {
    const PrepareReport& scan = m_scan.report;
    const auto count = [&scan](DropReason reason) {
        return scan.dropped[static_cast<size_t>(reason)].count;
    };
    CutReport report{m_name, nameOf(0), m_command.tableName(), scan, m_parts, 0, 0, 0, 0};
    for (const DropReason reason : {DropReason::Comment, DropReason::RepeatedHeader})
        report.scan.dropped[static_cast<size_t>(reason)] = {};
    report.lines = scan.rows - count(DropReason::Comment) - count(DropReason::RepeatedHeader);
    report.named = std::ssize(m_choice.lines);
    report.written = m_choice.areKept ? report.named : report.lines - report.named;
    report.notInViews = report.lines - static_cast<qint64>(m_scan.size());
    if (std::any_of(m_parts.begin(), m_parts.end(), std::mem_fn(&CutPart::isByWindow)))
        report.notInViews -= linesBesideMarkers();
    return report;
}

int Cut::write() {
    std::vector<qint64>& lines = m_choice.lines;
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    m_choice.areKept = qstrcmp(m_name, "keep") == 0;
    const CutReport made = report();
    if (const auto refusal = copyLines(scanPath(), m_scan.report.table.format, m_choice,
                                       *m_command.output("--output")))
        return m_command.refuse(*refusal);
    if (QFile* const json = m_command.output("--json"))
        writeAll(*json, QJsonDocument(jsonOf(made)).toJson());
    if (const auto failure = m_command.commitOutputs())
        return m_command.end(*failure);
    if (!m_arguments.has("--quiet"))
        m_streams.error.write(textOf(made));
    for (const CutPart& part : std::as_const(m_parts))
        if (part.matched == 0)
            complain(m_streams,
                     part.name + QStringLiteral(": names no line of %1.").arg(nameOf(0)));
    return StatusFine;
}

} // namespace

int keepCommand(const Arguments& arguments, Streams& streams) {
    return Cut("keep", arguments, streams).run();
}

int dropCommand(const Arguments& arguments, Streams& streams) {
    return Cut("drop", arguments, streams).run();
}
