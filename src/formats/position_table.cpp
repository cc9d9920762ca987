#include "position_table.h"

#include "head_table.h"
#include "input_file.h"
#include "p_value.h"
#include "place_columns.h"
#include "position_text.h"
#include "role_titles.h"
#include "table_head.h"
#include "table_rows.h"
#include "titles.h"

#include <algorithm>

namespace {

constexpr Separator separatorsTried[] = {Separator::Tab, Separator::Comma, Separator::Semicolon,
                                         Separator::WhiteSpace};

struct Found {
    TableFormat format;
    int chromosome = -1, position = -1, name = -1;
};

QList<QByteArray> split(const HeadLine& line, const TableFormat& format) {
    return HeadTable(format, {}).fields(line);
}

// The first line whose titles say chromosome, position and name.
std::optional<Found> byTitles(const QList<HeadLine>& lines) {
    for (qsizetype i = 0; i < std::min(lines.size(), qsizetype(1000)); ++i) {
        for (const Separator separator : separatorsTried) {
            Found found;
            found.format.separator = separator;
            found.format.quoted = true;
            found.format.titles = split(lines[i], found.format);
            found.format.headerLine = lines[i].number;
            found.format.firstDataLine = lines[i].number + 1;
            const QList<QByteArray>& titles = found.format.titles;
            if (!saysChromosome(titles) || !saysPosition(titles) || !saysName(titles))
                continue;
            ColumnChoice choice;
            const HeadTable table(found.format, lines.mid(i + 1, 1000));
            if (choosePlace(table, {}, {}, choice))
                continue;
            chooseName(table, {}, choice);
            if (choice.position >= 0 && choice.chromosome >= 0 && choice.name >= 0)
                return Found{found.format, choice.chromosome, choice.position, choice.name};
        }
    }
    return std::nullopt;
}

// Four or six columns without titles: chromosome, name, genetic distance and position.
std::optional<Found> byPlinkLayout(const QList<HeadLine>& lines) {
    constexpr int chromosome = 0, name = 1, distance = 2, position = 3;
    Found found;
    found.format.separator = Separator::WhiteSpace;
    const auto isMap = [&](const HeadLine& line) {
        const QList<QByteArray> fields = split(line, found.format);
        double number = 0.0;
        int place = 0;
        return (fields.size() == 4 || fields.size() == 6) &&
               readNumber(viewOf(fields[distance]), false, number) &&
               readPosition(viewOf(fields[position]), found.format, place) == PositionKind::Whole;
    };
    const QList<HeadLine> first = lines.mid(0, 20);
    if (first.isEmpty() || !std::all_of(first.begin(), first.end(), isMap))
        return std::nullopt;
    return Found{found.format, chromosome, position, name};
}

} // namespace

std::optional<Refusal> PositionTable::read(const QString& path) {
    InputFile head(path);
    if (std::optional<Refusal> refusal = head.open())
        return refusal;
    const TableHead first = readTableHead(head.text());
    if (first.isFailed)
        return head.failure();
    QList<HeadLine> lines = linesOf(viewOf(first.text));
    lines.removeIf(
        [](const HeadLine& line) { return line.isEmpty() || line.text.starts_with("##"); });
    std::optional<Found> found = byTitles(lines);
    if (!found)
        found = byPlinkLayout(lines);
    if (!found)
        return Refusal{
            RefusalCode::NotPositions,
            QStringLiteral("%1 does not say chromosome, position and name of markers. "
                           "Give a .bim, .map, .pvar or VCF file, or a table with titles "
                           "for all three.")
                .arg(path),
            {},
            {}};
    InputFile input(path);
    if (std::optional<Refusal> refusal = input.open())
        return refusal;
    const Columns columns{found->chromosome, found->position, found->name};
    return readRows(input.text(), found->format, columns) ? std::nullopt
                                                          : std::optional(input.failure());
}

bool PositionTable::readRows(QIODevice& text, const TableFormat& format, const Columns& columns) {
    TableRows rows(text, format);
    const auto field = [&](int column) { return rows.field(static_cast<size_t>(column)); };
    const auto needed =
        static_cast<size_t>(std::max({columns.chromosome, columns.position, columns.name}) + 1);
    while (rows.next()) {
        int position = 0;
        if (rows.line() < format.firstDataLine || rows.fieldCount() < needed ||
            isMissing(field(columns.chromosome)) || isMissing(field(columns.name)) ||
            readPosition(field(columns.position), format, position) != PositionKind::Whole)
            continue;
        const QByteArray name = bytesOf(field(columns.name));
        if (!m_places.contains(name))
            m_places.insert(name, {numberOf(field(columns.chromosome)), position});
    }
    return !rows.failed();
}

quint32 PositionTable::numberOf(std::string_view chromosome) {
    const QByteArray label = bytesOf(chromosome);
    const auto known = m_numbers.constFind(label);
    if (known != m_numbers.constEnd())
        return *known;
    m_chromosomes.append(label);
    return *m_numbers.insert(label, static_cast<quint32>(m_chromosomes.size() - 1));
}

std::optional<PositionTable::Place> PositionTable::find(std::string_view name) const {
    const auto place = m_places.constFind(
        QByteArray::fromRawData(name.data(), static_cast<qsizetype>(name.size())));
    if (place == m_places.constEnd())
        return std::nullopt;
    return Place{viewOf(m_chromosomes[place->chromosome]), place->position};
}
