#include "marker_texts.h"

#include "p_converter.h"
#include "p_value.h"
#include "text_buffer.h"
#include "titles.h"

#include <algorithm>

namespace {

QByteArray shownField(const TableRows& rows, int column) {
    const auto place = static_cast<size_t>(column);
    return column >= 0 && place < rows.fieldCount() ? bytesOf(rows.field(place)).replace('\t', ' ')
                                                    : QByteArray();
}

class TextReader {
public:
    TextReader(const ScanTable& table, const QList<int>& columns)
        : m_table(table), m_columns(columns), m_converter(table.report.table, ZeroP::Smallest) {}

    MarkerTexts read(size_t row, const TableRows& rows) {
        MarkerTexts texts;
        m_text.clear();
        m_converter.append(rows, m_text);
        const QByteArray p = bytesOf(m_text.view());
        if (p == PConverter::zeroPlaceholder) {
            texts.p = m_table.report.smallestP;
            appendNegLog10(m_table.negLog10(row), texts.negLog10);
        } else {
            texts.p = p.left(p.indexOf('\t'));
            texts.negLog10 = p.mid(p.indexOf('\t') + 1);
        }
        texts.name = shownField(rows, m_table.report.table.columns.name);
        for (const int column : m_columns)
            texts.columns.append(shownField(rows, column));
        return texts;
    }

private:
    const ScanTable& m_table;
    const QList<int>& m_columns;
    PConverter m_converter;
    TextBuffer m_text;
};

} // namespace

std::variant<QHash<size_t, MarkerTexts>, Refusal> readMarkerTexts(const QString& path,
                                                                  const ScanTable& table,
                                                                  std::vector<size_t> rows,
                                                                  const QList<int>& columns) {
    std::sort(rows.begin(), rows.end(),
              [&](size_t a, size_t b) { return table.lines[a] < table.lines[b]; });
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    std::vector<qint64> lines;
    lines.reserve(rows.size());
    for (const size_t row : rows)
        lines.push_back(table.lines[row]);
    QHash<size_t, MarkerTexts> texts;
    TextReader reader(table, columns);
    const auto refusal = visitLines(path, table, lines, [&](size_t i, const TableRows& line) {
        texts.insert(rows[i], reader.read(rows[i], line));
    });
    if (refusal)
        return *refusal;
    return texts;
}
