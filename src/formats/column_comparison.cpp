#include "column_comparison.h"

#include "excerpt.h"
#include "titles.h"

#include <QHash>
#include <algorithm>

namespace {

constexpr int linesLookedAt = 1000;

QList<std::string_view> windowFields(std::string_view line, char delimiter) {
    QList<std::string_view> fields;
    for (size_t from = 0; from <= line.size();) {
        const size_t end = std::min(line.find(delimiter, from), line.size());
        fields.append(line.substr(from, end - from));
        from = end + 1;
    }
    return fields;
}

// Without spaces and quotes around it: the window keeps both, which is another matter.
std::string_view bare(std::string_view text) {
    const size_t first = text.find_first_not_of(" \"");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \"") - first + 1);
}

bool partsAlike(const Layout& window, const TableFormat& right, std::string_view head) {
    const bool hasQuotes = right.quoted && head.find('"') != std::string_view::npos;
    return !hasQuotes && ((right.separator == Separator::Tab && window.delimiter == '\t') ||
                          (right.separator == Separator::Comma && window.delimiter == ','));
}

QString titleAt(const TableFormat& format, int column) {
    return column < format.titles.size() ? QString::fromUtf8(format.titles[column])
                                         : QString::number(column + 1);
}

ComparedColumn compared(const Column& window, int rightColumn, const Understanding& right,
                        std::initializer_list<Role> roles) {
    ComparedColumn column;
    column.number = static_cast<int>(window.index) + 1;
    column.title = window.name;
    if (rightColumn < 0)
        return column;
    column.rightNumber = rightColumn + 1;
    column.rightTitle = titleAt(right.format, rightColumn);
    for (const RoleNote& note : right.columns.notes)
        if (note.column == rightColumn && std::count(roles.begin(), roles.end(), note.role) > 0)
            column.why = note.why;
    return column;
}

// Compares texts, on lines that part into fields differently.
class TextComparison {
public:
    TextComparison(const Layout& window, const Understanding& right, std::string_view head)
        : m_window(window), m_format(right.format), m_head(head) {}

    // Calls `take` with each line's number and both kinds of fields.
    template <typename Take>
    void eachLine(const Take& take) const {
        QList<std::string_view> fields;
        QByteArray scratch;
        qint64 line = 0;
        for (size_t from = 0; from < m_head.size();) {
            const size_t end = std::min(m_head.find('\n', from), m_head.size());
            const std::string_view text = m_head.substr(from, end - from);
            from = end + 1;
            if (++line < m_format.firstDataLine || text.empty() || text.front() == '#')
                continue;
            if (line >= m_format.firstDataLine + linesLookedAt)
                return;
            splitLine(text, m_format, fields, scratch);
            take(line, windowFields(text, m_window.delimiter), fields);
        }
    }

private:
    const Layout& m_window;
    const TableFormat& m_format;
    std::string_view m_head;
};

void compareTexts(qint64 line, const QList<std::string_view>& windows,
                  const QList<std::string_view>& rights, ComparedColumn& column) {
    const qsizetype window = column.number - 1, right = column.rightNumber - 1;
    if (!column.isRight || right < 0 || window >= windows.size() || right >= rights.size() ||
        bare(windows[window]) == bare(rights[right]))
        return;
    column.isRight = false;
    column.line = line;
    column.windowText = excerpt(windows[window]);
    column.rightText = excerpt(rights[right]);
}

bool isQuoted(std::string_view field) {
    return field.substr(0, 1) == "\"";
}

bool isTaken(int column, int choice) {
    return choice >= 0 && column == choice;
}

// The tests that rows are of. Where none is ADD and no marker comes under two of them, the column
// says something else, such as genotypes.
class TestsSeen {
public:
    explicit TestsSeen(const ColumnChoice& columns) : m_columns(columns) {}

    void add(const QList<std::string_view>& fields) {
        constexpr qsizetype testsKept = 6;
        if (m_columns.test < 0 || m_columns.test >= fields.size())
            return;
        const std::string_view text = fields[m_columns.test];
        const QString test = excerpt(text);
        if (m_tests.size() < testsKept && !m_tests.contains(test))
            m_tests.append(test);
        QList<QByteArray> marker;
        for (const int column :
             {m_columns.chromosome, m_columns.position, m_columns.joined, m_columns.name})
            marker.append(bytesOf(fields.value(column)));
        if (!m_testOfMarker.contains(marker))
            m_testOfMarker.insert(marker, bytesOf(text));
        m_areTests = m_areTests || text == "ADD" || m_testOfMarker[marker] != bytesOf(text);
    }

    QList<QString> tests() const { return m_areTests ? m_tests : QList<QString>(); }

private:
    const ColumnChoice& m_columns;
    QList<QString> m_tests;
    QHash<QList<QByteArray>, QByteArray> m_testOfMarker; // the first
    bool m_areTests = false;
};

} // namespace

ComparedColumns compareColumns(const Layout& window, const Understanding& right,
                               std::string_view head) {
    const ColumnChoice& choice = right.columns;
    ComparedColumns result;
    const bool isJoined = choice.joined >= 0;
    result.chromosome = compared(window.chromosome, isJoined ? choice.joined : choice.chromosome,
                                 right, {Role::Chromosome, Role::Name});
    result.position = compared(window.position, isJoined ? choice.joined : choice.position, right,
                               {Role::Position, Role::Name});
    result.p = compared(window.pValue, choice.p >= 0 ? choice.p : choice.logP, right,
                        {Role::PValue, Role::LogP});
    const bool isAlike = partsAlike(window, right.format, head);
    const bool isSpaced =
        window.delimiter == ' ' && (right.format.separator == Separator::Spaces ||
                                    right.format.separator == Separator::WideSpaces ||
                                    right.format.separator == Separator::WhiteSpace);
    const auto columns = {&result.chromosome, &result.position, &result.p};
    if (isAlike)
        for (ComparedColumn* column : columns)
            column->isRight = column->rightNumber == 0 || column->number == column->rightNumber;
    const auto isEmpty = [](std::string_view field) { return field.empty(); };
    TestsSeen tests(choice);
    TextComparison(window, right, head)
        .eachLine([&](qint64 line, const auto& windows, const auto& rights) {
            result.isAligned |= isSpaced && std::any_of(windows.begin(), windows.end(), isEmpty);
            for (const ComparedColumn* column : columns)
                result.isQuoted |= isQuoted(windows.value(column->number - 1));
            tests.add(rights);
            if (isAlike)
                return;
            for (ComparedColumn* column : columns)
                compareTexts(line, windows, rights, *column);
        });
    result.tests = tests.tests();
    // The right column can hold something else than the window takes it for.
    const int taken = result.chromosome.number - 1;
    result.isNames = isAlike && !isTaken(taken, choice.chromosome) &&
                     (isTaken(taken, choice.joined) || isTaken(taken, choice.name));
    result.isLog = choice.p < 0 && choice.logP >= 0 && result.p.isRight;
    if (isJoined)
        result.chromosome.isRight = result.position.isRight = false;
    if (choice.p < 0 && choice.logP >= 0)
        result.p.isRight = false;
    return result;
}
