#include "hits_command.h"

#include "column_option.h"
#include "file_writing.h"
#include "hits_words.h"
#include "inflation.h"
#include "p_value.h"
#include "position_text.h"
#include "scan_command.h"
#include "titles.h"

#include <QJsonDocument>
#include <algorithm>
#include <cmath>

namespace {

struct Question {
    QByteArray threshold; // p
    LeadRule rule;
};

Failure wrong(const QByteArray& message) {
    return {StatusWrongCall, QString::fromUtf8(message)};
}

std::variant<Question, Failure> questionOf(const Arguments& arguments) {
    Question question{arguments.value("--p").value_or("5e-8"), {}};
    const PValue p = readPValue(viewOf(question.threshold), false);
    if (p.kind != PValue::Kind::Number || p.isBound || p.isNegative || p.p > 1.0 ||
        std::isinf(p.negLog10))
        return wrong("--p " + question.threshold +
                     ": write a threshold above 0, up to 1, such as 5e-8. The column of p is named "
                     "with --p-column.");
    question.rule.negLog10 = p.negLog10;
    if (const auto text = arguments.value("--window")) {
        TableFormat grouped; // 500,000 is a number too
        grouped.quoted = true;
        if (readPosition(viewOf(*text), grouped, question.rule.window) != PositionKind::Whole ||
            question.rule.window < 1)
            return wrong("--window " + *text + ": write a whole number of base pairs from 1.");
    }
    if (arguments.files.size() > 1)
        return wrong("hits reads one file. pelmark-tools prepare makes one of several.");
    return question;
}

// The word for a column in a list: its number where its title does not name it.
QByteArray wordFor(const QList<QByteArray>& titles, const QByteArray& title) {
    const auto column = columnOf("", title, titles, static_cast<int>(titles.size()));
    const bool isNamed = std::holds_alternative<int>(column) && !title.contains(',');
    return isNamed ? title : QByteArray::number(titles.indexOf(title) + 1);
}

// What columnOf() proposes for one column, for the whole list.
void proposeLists(Refusal& refusal, const QList<QByteArray>& titles, const QByteArrayList& words,
                  qsizetype wrongOne) {
    QByteArrayList all = words;
    for (qsizetype i = 0; i < refusal.options.size(); ++i) {
        const QByteArray number = refusal.options[i].mid(refusal.options[i].lastIndexOf(' ') + 1);
        const bool isNumber =
            std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
        all[wrongOne] = isNumber ? number : wordFor(titles, refusal.candidates[i]);
        refusal.options[i] = "--columns " + shellQuoted(all.join(','));
    }
}

// How many columns a table has; without titles, its first row tells.
std::variant<int, Refusal> columnCount(const QString& path, const ScanTable& scan) {
    int count = static_cast<int>(scan.report.table.format.titles.size());
    if (count > 0)
        return count;
    const auto refusal =
        visitLines(path, scan, {scan.lines.smallest()}, [&](size_t, const TableRows& row) {
            count = static_cast<int>(row.fieldCount());
        });
    if (refusal)
        return *refusal;
    return count;
}

// The columns of --columns, from 0.
std::variant<QList<int>, Refusal> columnsOf(const QByteArray& list, int count,
                                            const QList<QByteArray>& titles) {
    QList<int> columns;
    const QByteArrayList words = list.isEmpty() ? QByteArrayList() : list.split(',');
    for (qsizetype i = 0; i < words.size(); ++i) {
        auto column = columnOf("--columns", words[i], titles, count);
        if (auto* refusal = std::get_if<Refusal>(&column)) {
            proposeLists(*refusal, titles, words, i);
            return *refusal;
        }
        columns.append(std::get<int>(column));
    }
    return columns;
}

std::vector<size_t> rowsToRead(const std::vector<LeadMarker>& leads) {
    std::vector<size_t> rows;
    for (const LeadMarker& lead : leads) {
        rows.push_back(lead.row);
        if (lead.neighbor)
            rows.push_back(*lead.neighbor);
    }
    return rows;
}

// Fills in the leads and their texts.
std::optional<Refusal> findLeads(const QString& path, const QByteArray& columnList, Hits& hits) {
    const QList<QByteArray>& titles = hits.scan.report.table.format.titles;
    const auto count = columnCount(path, hits.scan);
    if (const auto* refusal = std::get_if<Refusal>(&count))
        return *refusal;
    const auto columns = columnsOf(columnList, std::get<int>(count), titles);
    if (const auto* refusal = std::get_if<Refusal>(&columns))
        return *refusal;
    for (const int column : std::get<QList<int>>(columns))
        hits.titles.append(titles.value(column, "V" + QByteArray::number(column + 1)));
    hits.leads = leadMarkers(hits.scan, hits.rule);
    hits.lambda = genomicInflation(hits.scan.points.values);
    auto texts =
        readMarkerTexts(path, hits.scan, rowsToRead(hits.leads), std::get<QList<int>>(columns));
    if (const auto* refusal = std::get_if<Refusal>(&texts))
        return *refusal;
    hits.texts = std::get<QHash<size_t, MarkerTexts>>(std::move(texts));
    return std::nullopt;
}

} // namespace

int hitsCommand(const Arguments& arguments, Streams& streams) {
    ScanCommand command("hits", arguments, streams, "--p-column");
    const std::variant<Question, Failure> question = questionOf(arguments);
    if (const auto* failure = std::get_if<Failure>(&question))
        return command.end(*failure);
    if (const auto failure = command.readParts(arguments.files))
        return command.end(*failure);
    const std::variant<PrepareOptions, Failure> options = command.readOptions();
    if (const auto* failure = std::get_if<Failure>(&options))
        return command.end(*failure);
    if (const auto failure = command.openOutputs({"--json"}, true))
        return command.end(*failure);
    const QString path = command.inputs().paths()[0];
    const auto read = readScanTable(path, std::get<PrepareOptions>(options), command.progress());
    command.clearProgress();
    if (const auto* refusal = std::get_if<Refusal>(&read))
        return command.refuse(*refusal);
    const auto& scan = std::get<ScanTable>(read);
    const auto& [threshold, rule] = std::get<Question>(question);
    Hits hits{scan,      {command.inputs().names(), command.tableName(), scan.report},
              threshold, rule,
              {},        {},
              {},        {}};
    for (RoleNote& note : hits.reading.report.table.columns.notes)
        note.why = command.withPOption(note.why);
    if (const auto refusal = findLeads(path, arguments.value("--columns").value_or(""), hits))
        return command.refuse(*refusal);
    writeAll(*command.output("--output"), tableOf(hits));
    if (QFile* const json = command.output("--json"))
        writeAll(*json, QJsonDocument(jsonOf(hits)).toJson());
    if (const auto failure = command.commitOutputs())
        return command.end(*failure);
    if (!arguments.has("--quiet"))
        streams.error.write(textOf(hits));
    return StatusFine;
}
