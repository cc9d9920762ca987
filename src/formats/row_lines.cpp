#include "row_lines.h"

#include <algorithm>
#include <iterator>

std::vector<RowLines::Run>::const_iterator RowLines::runOf(size_t row) const {
    const auto isBefore = [](size_t each, const Run& run) { return each < run.row; };
    return std::prev(std::upper_bound(m_runs.begin(), m_runs.end(), row, isBefore));
}

qint64 RowLines::operator[](size_t row) const {
    const Run& run = *runOf(row);
    return run.line + static_cast<qint64>(row - run.row);
}

qint64 RowLines::smallest() const {
    const auto isSmaller = [](const Run& a, const Run& b) { return a.line < b.line; };
    return std::min_element(m_runs.begin(), m_runs.end(), isSmaller)->line;
}

std::vector<qint64> RowLines::ofRows(size_t begin, size_t end) const {
    std::vector<qint64> lines;
    lines.reserve(end - begin);
    for (auto run = runOf(begin); begin < end; ++run) {
        const size_t runEnd = std::next(run) == m_runs.end() ? m_size : std::next(run)->row;
        for (; begin < std::min(runEnd, end); ++begin)
            lines.push_back(run->line + static_cast<qint64>(begin - run->row));
    }
    return lines;
}

std::vector<qint64> RowLines::ascending() const {
    std::vector<qint64> lines = ofRows(0, m_size);
    std::sort(lines.begin(), lines.end());
    return lines;
}
