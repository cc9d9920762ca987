// What `keep` and `drop` promise of any file: rows saved of a chromosome are found there, and the
// lines that are cut and those that stay are the file. Input: which rows, how the file is encoded,
// the file.

#include "finding.h"
#include "input.h"
#include "line_copy.h"
#include "point_table.h"
#include "points.h"
#include "scan_table.h"
#include "table_match.h"

#include <QBuffer>
#include <QStringEncoder>
#include <QTemporaryFile>
#include <algorithm>
#include <set>

namespace {

void write(QTemporaryFile& file, const QByteArray& bytes) {
    const bool isWritten = file.open() && file.write(bytes) == bytes.size() && file.flush();
    mustHold(isWritten, "temporary file");
}

// Lines with their ends, in the encoding of the file.
struct Encoded {
    QByteArray mark;
    QByteArrayList lines;
    QStringList texts; // of the lines, without their ends
};

Encoded encoded(const QByteArray& bytes, int encoding, bool hasReturns) {
    const QStringConverter::Encoding codes[] = {QStringConverter::Utf8, QStringConverter::Utf16LE,
                                                QStringConverter::Utf32BE};
    QStringEncoder encoder(codes[encoding]);
    Encoded file;
    if (encoding > 0)
        file.mark = QByteArray(encoder.encode(QString(QChar(0xFEFF))));
    QString text = QString::fromUtf8(bytes);
    text.remove(u'\r').remove(QChar(0xFEFF)).remove(QChar(0));
    file.texts = text.split(u'\n');
    for (qsizetype i = 0; i < file.texts.size(); ++i) {
        const bool isLast = i + 1 == file.texts.size();
        const QString end = isLast ? "" : hasReturns ? "\r\n" : "\n";
        file.lines.append(QByteArray(encoder.encode(file.texts[i] + end)));
    }
    return file;
}

QByteArray copied(const QString& path, const TableFormat& format, const LineChoice& choice) {
    QBuffer to;
    to.open(QIODevice::WriteOnly);
    mustHold(!copyLines(path, format, choice, to), "copied");
    return to.data();
}

// The lines that go, or all others, by the plain rule.
QByteArray plainCopy(const Encoded& file, const TableFormat& format, const std::set<qint64>& lines,
                     bool areKept) {
    const QString header = format.headerLine > 0 ? file.texts.value(format.headerLine - 1) : "";
    QByteArray all = file.mark;
    for (qsizetype i = 0; i < file.lines.size(); ++i) {
        const QString& text = file.texts[i];
        const bool isHead = i + 1 < format.firstDataLine || text.startsWith(u'#') ||
                            (!header.isEmpty() && text == header);
        const bool isListed = lines.contains(i + 1);
        if (areKept ? isListed || isHead : !isListed)
            all += file.lines[i];
    }
    return all;
}

// The rows of a saved table, line by line: position and numbers.
QByteArrayList savedRows(const QByteArray& table) {
    QByteArrayList rows;
    for (const QByteArray& line : table.split('\n').sliced(1))
        if (!line.isEmpty())
            rows.append(line.mid(line.indexOf('\t') + 1));
    return rows;
}

QByteArray savedTable(const Points& points) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    mustHold(writePointTable(buffer, points, QStringLiteral("1")), "saved");
    return buffer.data();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const auto rows = input.number<std::uint32_t>();
    const int place = input.below(256), encoding = input.below(3);
    const bool hasReturns = input.flag();
    const Encoded file = encoded(input.rest(), encoding, hasReturns);
    QTemporaryFile scanFile, tableFile;
    write(scanFile, file.mark + file.lines.join());

    const auto read = readScanTable(scanFile.fileName(), {});
    const auto* scan = std::get_if<ScanTable>(&read);
    if (!scan || scan->size() == 0)
        return 0;
    const auto& chromosome = scan->chromosomes[place % scan->chromosomes.size()];
    Points chosen, whole;
    for (size_t row = chromosome.begin; row < chromosome.end; ++row) {
        whole.positions.append(scan->position(row));
        whole.values.append(scan->value(row));
        if ((rows >> (row % 32) & 1U) == 0)
            continue;
        chosen.positions.append(scan->position(row));
        chosen.values.append(scan->value(row));
    }
    if (chosen.positions.isEmpty())
        return 0;
    const QByteArray table = savedTable(chosen);
    write(tableFile, table);
    const auto saved = readSavedTable(tableFile.fileName());
    mustHold(std::holds_alternative<SavedTable>(saved), "a saved table is one");
    const TableMatch match =
        matchTables(*scan, {{std::get<SavedTable>(saved), chromosome.name}}).front();
    mustHold(!match.missing && match.fitting.contains(chromosome.name), "rows are found");
    mustHold(match.lines.size() == static_cast<size_t>(chosen.positions.size()), "each row once");

    // Of rows that look the same, the first in the file.
    QByteArrayList wanted = savedRows(table);
    const QByteArrayList all = savedRows(savedTable(whole));
    QList<std::pair<qint64, QByteArray>> inFile;
    for (qsizetype i = 0; i < all.size(); ++i)
        inFile.append({scan->lines[chromosome.begin + static_cast<size_t>(i)], all[i]});
    std::ranges::sort(inFile);
    std::set<qint64> expected;
    for (const auto& [line, text] : std::as_const(inFile))
        if (wanted.removeOne(text))
            expected.insert(line);
    const std::set<qint64> lines(match.lines.begin(), match.lines.end());
    mustHold(lines == expected, "the lines of these rows");

    LineChoice choice{{lines.begin(), lines.end()}, true};
    const TableFormat& format = scan->report.table.format;
    for (const bool areKept : {true, false}) {
        choice.areKept = areKept;
        const QByteArray copy = copied(scanFile.fileName(), format, choice);
        const QByteArray plain = plainCopy(file, format, lines, areKept);
        mustHold(copy == plain, areKept ? "kept" : "dropped", QString::fromUtf8(plain),
                 QString::fromUtf8(copy));
    }
    return 0;
}
