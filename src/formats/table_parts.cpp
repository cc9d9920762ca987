#include "table_parts.h"

#include "column_option.h"
#include "titles.h"

#include <algorithm>

namespace {

constexpr qsizetype valuesKept = 1'000;

} // namespace

void TableParts::noteValues(const TableRows& rows, quint32 chromosome, int position) {
    if (chromosome != m_chromosome || position != m_position)
        m_here.clear();
    m_chromosome = chromosome;
    m_position = position;
    const QByteArray name =
        m_nameColumn < 0 ? QByteArray() : bytesOf(rows.fieldOrNone(m_nameColumn));
    for (Column& column : m_columns) {
        const QByteArray value = bytesOf(rows.fieldOrNone(column.column));
        if (column.rows.size() <= valuesKept || column.rows.contains(value))
            ++column.rows[value];
        column.hasAdditive = column.hasAdditive || value == "ADD";
        m_hasAdditiveTest = m_hasAdditiveTest || (column.kind == Kind::Test && column.hasAdditive &&
                                                  column.rows.size() > 1);
        const std::pair key(column.column, name);
        if (!m_here.contains(key))
            m_here.insert(key, value);
        column.hasRepeats = column.hasRepeats || m_here.value(key) != value;
        if (m_isThorough)
            noteThoroughly(chromosome, position, name, value, column);
    }
}

void TableParts::noteThoroughly(quint32 chromosome, int position, const QByteArray& name,
                                const QByteArray& value, Column& column) const {
    constexpr size_t seed = 20240607;
    column.seen.emplace_back(qHashMulti(seed, chromosome, position, name), qHash(value, seed));
}

// Whether a marker comes under two values. A thorough look sorts the markers that it saw.
bool TableParts::parts(const Column& column) {
    if (column.rows.size() < 2 || column.hasRepeats)
        return column.hasRepeats;
    auto seen = column.seen;
    std::sort(seen.begin(), seen.end());
    return std::adjacent_find(seen.begin(), seen.end(), [](const auto& a, const auto& b) {
               return a.first == b.first && a.second != b.second;
           }) != seen.end();
}

bool TableParts::needThoroughLook() const {
    return !m_isThorough &&
           std::any_of(m_columns.begin(), m_columns.end(), [](const Column& column) {
               return column.rows.size() > 1 && !column.hasRepeats;
           });
}

// RVTESTS names a marker's own test by its place, so that each such value has one row.
QList<QByteArray> TableParts::choices(const Column& column) {
    QList<QByteArray> values = column.rows.keys();
    const auto isOfOneRow = [&](const QByteArray& value) { return column.rows[value] == 1; };
    if (!std::all_of(values.cbegin(), values.cend(), isOfOneRow))
        values.removeIf(isOfOneRow);
    std::sort(values.begin(), values.end(), [&](const QByteArray& a, const QByteArray& b) {
        return std::pair(-column.rows[a], a) < std::pair(-column.rows[b], b);
    });
    return values;
}

std::optional<Refusal> TableParts::judge(const QList<QByteArray>& titles) const {
    constexpr qsizetype namedValues = 20;
    const auto parting = std::find_if(m_columns.begin(), m_columns.end(), parts);
    if (parting == m_columns.end())
        return std::nullopt;
    const QList<QByteArray> values = choices(*parting);
    const bool isTest = parting->kind == Kind::Test;
    Refusal refusal{isTest ? RefusalCode::SeveralTests : RefusalCode::SeveralTraits,
                    QStringLiteral("%1 has %2 values, and markers occur under several of them: say "
                                   "which rows to keep.")
                        .arg(columnText(titles, parting->column),
                             parting->rows.size() > valuesKept
                                 ? QStringLiteral("more than %1").arg(valuesKept)
                                 : QString::number(parting->rows.size())),
                    values.mid(0, namedValues),
                    {}};
    if (values.size() < parting->rows.size())
        refusal.message += QStringLiteral(" Values of a single row are not offered, as names of "
                                          "markers: to keep those rows, delete the others.");
    const QByteArray title = titles.value(parting->column);
    for (const QByteArray& value : std::as_const(refusal.candidates))
        refusal.options.append(isTest ? "--test-name " + shellQuoted(value)
                                      : "--where " + shellQuoted(title + '=' + value));
    return refusal;
}
