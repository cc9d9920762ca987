#include "layout.h"

#include "excerpt.h"
#include "line_fields.h"
#include "number_fields.h"
#include "utf8.h"

#include <algorithm>
#include <optional>

namespace {

std::optional<char> delimiterOf(std::string_view firstLine) {
    for (const char delimiter : {'\t', ' ', ','})
        if (firstLine.find(delimiter) != std::string_view::npos)
            return delimiter;
    return std::nullopt;
}

bool isNumeric(std::string_view field) {
    return toInteger(field) || toReal(field);
}

// The words are searched for loosely because every tool titles its columns in its own way.
bool mentions(std::string_view title, std::initializer_list<const char*> words) {
    const QString text = fromUtf8(title);
    return std::any_of(words.begin(), words.end(), [&](const char* word) {
        return text.contains(QLatin1String(word), Qt::CaseInsensitive);
    });
}

bool namesPosition(std::string_view title) {
    return mentions(title, {"pos"});
}

bool namesPValue(std::string_view title) {
    return title == "P" || title == "p" || mentions(title, {"pval", "p-val"});
}

bool namesChromosome(std::string_view title) {
    return mentions(title, {"chr", "some", "id"});
}

// The leftmost column whose title passes; the number of titles where none does.
size_t columnWhere(bool (*passes)(std::string_view), const LineFields& titles) {
    size_t column = 0;
    while (column < titles.fieldCount() && !passes(titles.field(column)))
        ++column;
    return column;
}

bool isHeader(const LineFields& line) {
    return columnWhere([](std::string_view field) { return !isNumeric(field); }, line) <
           line.fieldCount();
}

// Sets the column to the leftmost one whose title passes. False where there is none.
bool findColumn(bool (*passes)(std::string_view), const LineFields& titles, Column& column) {
    column.index = columnWhere(passes, titles);
    if (column.index == titles.fieldCount())
        return false;
    column.name = excerpt(titles.field(column.index));
    return true;
}

} // namespace

size_t Layout::columnsNeeded() const {
    return std::max({chromosome.index, position.index, pValue.index}) + 1;
}

Result<Layout> windowLayout(std::string_view head) {
    const std::string_view firstLine = head.substr(0, head.find('\n'));
    const auto fault = [&](FaultCode code) { return Fault{code, 1, {}, excerpt(firstLine)}; };
    const std::optional<char> delimiter = delimiterOf(firstLine);
    if (!delimiter)
        return fault(FaultCode::UnknownDelimiter);
    LineFields fields;
    fields.find(firstLine, *delimiter);
    fields.nextLine();
    if (fields.fieldCount() < 3)
        return fault(FaultCode::TooFewColumns);
    if (!isHeader(fields))
        return Layout{*delimiter, 0, {0, "1"}, {1, "2"}, {2, "3"}};
    Layout layout{*delimiter, 1, {}, {}, {}};
    if (!findColumn(namesPosition, fields, layout.position) ||
        !findColumn(namesPValue, fields, layout.pValue) ||
        !findColumn(namesChromosome, fields, layout.chromosome))
        return fault(FaultCode::IncorrectColumns);
    return layout;
}
