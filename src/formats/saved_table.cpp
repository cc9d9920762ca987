#include "saved_table.h"

#include "input_file.h"
#include "number_fields.h"
#include "point_table.h"
#include "table_rows.h"

namespace {

// Adds the line as a row. False where it is none.
bool takeRow(const TableRows& rows, SavedTable& table) {
    constexpr size_t columns = 4;
    const std::string_view line = rows.text();
    const size_t label = line.find('\t'), position = line.find('\t', label + 1);
    if (rows.fieldCount() != columns)
        return false;
    const auto place = plainInteger(line.substr(label + 1, position - label - 1));
    const std::string_view numbers = line.substr(position + 1);
    if (!place || !toReal(rows.field(2)) || !toReal(rows.field(3)))
        return false;
    table.rows.push_back({*place, static_cast<int>(numbers.size()),
                          static_cast<size_t>(table.text.size()), rows.line()});
    table.text.append(numbers.data(), static_cast<qsizetype>(numbers.size()));
    return true;
}

} // namespace

std::variant<SavedTable, Refusal> readSavedTable(const QString& path) {
    const auto refusal = [](qint64 line, const QString& why) {
        return Refusal{RefusalCode::NotATable, why, {}, {}, line};
    };
    InputFile input(path);
    if (std::optional<Refusal> refused = input.open())
        return *std::move(refused);
    SavedTable table;
    TableRows rows(input.text(), {});
    if (!rows.next() || rows.text() != tableTitles)
        return rows.failed()
                   ? input.failure()
                   : refusal(1, QStringLiteral("this is no table that the window saved: its first "
                                               "line is not Chr, Position, P, -log10(P)."));
    while (rows.next())
        if (!rows.text().empty() && !takeRow(rows, table))
            return refusal(rows.line(),
                           QStringLiteral("this line is not as the window writes it: a label, a "
                                          "position, P and -log10(P), separated by tabs."));
    if (rows.failed())
        return input.failure();
    return table;
}
