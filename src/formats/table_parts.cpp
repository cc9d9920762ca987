#include "table_parts.h"

#include "column_option.h"
#include "titles.h"

#include <algorithm>

namespace {

constexpr qsizetype valuesKept = 1'000;
constexpr qsizetype firstMarkers = 20'000;

} // namespace

void TableParts::noteValues(const TableRows& rows, quint32 chromosome, int position) {
    if (chromosome != m_chromosome || position != m_position)
        m_here.clear();
    m_chromosome = chromosome;
    m_position = position;
    QByteArray marker;
    for (Column& column : m_columns) {
        const std::string_view value = rows.field(static_cast<size_t>(column.column));
        // Most tables hold one test and one trait only.
        if (column.values.size() == 1 && m_first.size() >= firstMarkers &&
            value == viewOf(column.first))
            continue;
        if (marker.isEmpty()) {
            marker = QByteArray::number(chromosome) + ':' + QByteArray::number(position) + ':';
            if (m_nameColumn >= 0)
                marker += bytesOf(rows.field(static_cast<size_t>(m_nameColumn)));
        }
        noteValue(column, bytesOf(value), marker);
    }
}

void TableParts::noteValue(Column& column, const QByteArray& value, const QByteArray& marker) {
    if (column.values.isEmpty())
        column.first = value;
    if (column.values.size() <= valuesKept)
        column.values.insert(value);
    column.hasAdditive = column.hasAdditive || value == "ADD";
    m_hasAdditiveTest = m_hasAdditiveTest || (column.kind == Kind::Test && column.hasAdditive &&
                                              column.values.size() > 1);
    const QByteArray key = QByteArray::number(column.column) + ':' + marker;
    if (!m_here.contains(key))
        m_here.insert(key, value);
    if (m_first.size() < firstMarkers && !m_first.contains(key))
        m_first.insert(key, value);
    column.hasRepeats =
        column.hasRepeats || m_here.value(key) != value || m_first.value(key, value) != value;
}

std::optional<Refusal> TableParts::judge(const QList<QByteArray>& titles) const {
    constexpr qsizetype namedValues = 20;
    const auto parting = std::find_if(m_columns.begin(), m_columns.end(), [](const Column& column) {
        return column.values.size() > 1 && column.hasRepeats;
    });
    if (parting == m_columns.end())
        return std::nullopt;
    QList<QByteArray> values(parting->values.cbegin(), parting->values.cend());
    std::sort(values.begin(), values.end());
    const bool isTest = parting->kind == Kind::Test;
    Refusal refusal{isTest ? RefusalCode::SeveralTests : RefusalCode::SeveralTraits,
                    QStringLiteral("%1 has %2 values, and markers occur under several of them: say "
                                   "which rows to keep.")
                        .arg(columnText(titles, parting->column),
                             values.size() > valuesKept
                                 ? QStringLiteral("more than %1").arg(valuesKept)
                                 : QString::number(values.size())),
                    values.mid(0, namedValues),
                    {}};
    const QByteArray title = titles.value(parting->column);
    for (const QByteArray& value : std::as_const(refusal.candidates))
        refusal.options.append(isTest ? "--test-name " + shellQuoted(value)
                                      : "--where " + shellQuoted(title + '=' + value));
    return refusal;
}
