#include "marker_choice.h"

#include "chromosome_names.h"
#include "input_file.h"
#include "number_fields.h"
#include "table_rows.h"
#include "titles.h"

#include <QHash>
#include <algorithm>

namespace {

// A whole number above 0, perhaps with a comma before each three digits.
std::optional<int> readBasePairs(std::string_view text) {
    constexpr size_t group = 4; // a comma and three digits
    for (size_t i = 0; i < text.size() && text.find(',') != std::string_view::npos; ++i)
        if (const bool isCommaPlace = (text.size() - i) % group == 0;
            isCommaPlace != (text[i] == ',') || (isCommaPlace && i == 0))
            return std::nullopt;
    const auto number = plainInteger(viewOf(bytesOf(text).replace(",", "")));
    return number && *number > 0 ? number : std::nullopt;
}

} // namespace

std::optional<Region> readRegion(std::string_view text) {
    const size_t colon = text.rfind(':'), dash = text.rfind('-');
    if (colon == std::string_view::npos || colon == 0 || dash == std::string_view::npos ||
        dash < colon)
        return std::nullopt;
    const auto first = readBasePairs(text.substr(colon + 1, dash - colon - 1));
    const auto last = readBasePairs(text.substr(dash + 1));
    if (!first || !last || *first > *last)
        return std::nullopt;
    return Region{bytesOf(text.substr(0, colon)), *first, *last};
}

std::optional<size_t> chromosomeOf(const ScanTable& scan, const QByteArray& label) {
    const auto place = [&scan](const auto& isIt) -> std::optional<size_t> {
        const auto found = std::find_if(scan.chromosomes.begin(), scan.chromosomes.end(), isIt);
        if (found == scan.chromosomes.end())
            return std::nullopt;
        return static_cast<size_t>(found - scan.chromosomes.begin());
    };
    const auto exact = place([&](const auto& chromosome) { return chromosome.name == label; });
    const QByteArray key = chromosomeKey(viewOf(label));
    return exact ? exact : place([&](const auto& chromosome) {
        return chromosomeKey(viewOf(chromosome.name)) == key;
    });
}

std::vector<qint64> linesIn(const ScanTable& scan, size_t chromosome, const Region& region) {
    const ScanTable::Chromosome& rows = scan.chromosomes[static_cast<qsizetype>(chromosome)];
    const auto at = [&scan](size_t row) {
        return scan.points.positions.begin() + static_cast<qsizetype>(row);
    };
    const auto first = std::lower_bound(at(rows.begin), at(rows.end), region.first);
    const auto last = std::upper_bound(first, at(rows.end), region.last);
    const auto rowAt = [&](auto position) {
        return static_cast<size_t>(position - scan.points.positions.begin());
    };
    return scan.lines.ofRows(rowAt(first), rowAt(last));
}

std::variant<QList<QByteArray>, Refusal> readNames(const QString& path) {
    InputFile input(path);
    if (std::optional<Refusal> refusal = input.open())
        return *std::move(refusal);
    QList<QByteArray> names;
    TableRows rows(input.text(), {});
    while (rows.next())
        if (const QByteArray name = bytesOf(rows.text()).trimmed(); !name.isEmpty())
            names.append(name);
    if (rows.failed())
        return input.failure();
    return names;
}

std::variant<std::vector<NameMatch>, Refusal> matchNames(const QString& path, const ScanTable& scan,
                                                         const QList<QList<QByteArray>>& lists) {
    const Understanding& table = scan.report.table;
    const int column = table.columns.name >= 0 ? table.columns.name : table.columns.joined;
    if (column < 0)
        return Refusal{RefusalCode::UnknownColumn,
                       path + QStringLiteral(": no column holds the markers' names. Say which one "
                                             "does with --name COLUMN."),
                       {},
                       {}};
    QHash<QByteArrayView, QList<size_t>> wanted; // the lists that have the name
    for (qsizetype list = 0; list < lists.size(); ++list)
        for (const QByteArray& name : lists[list])
            wanted[name].append(static_cast<size_t>(list));
    std::vector<NameMatch> matches(static_cast<size_t>(lists.size()));
    QSet<QByteArrayView> found;
    const std::vector<qint64> lines = scan.lines.ascending();
    const auto visit = [&](size_t i, const TableRows& rows) {
        const std::string_view name = rows.field(static_cast<size_t>(column));
        const auto named = wanted.constFind(QByteArrayView(name.data(), std::ssize(name)));
        if (named == wanted.constEnd())
            return;
        found.insert(named.key());
        for (const size_t list : *named)
            if (std::vector<qint64>& taken = matches[list].lines;
                taken.empty() || taken.back() != lines[i])
                taken.push_back(lines[i]);
    };
    if (std::optional<Refusal> refusal = visitLines(path, scan, lines, visit))
        return *std::move(refusal);
    for (qsizetype list = 0; list < lists.size(); ++list)
        for (const QByteArray& name : lists[list])
            if (!found.contains(name))
                matches[static_cast<size_t>(list)].notFound.append(name);
    return matches;
}
