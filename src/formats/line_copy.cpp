#include "line_copy.h"

#include "block_size.h"
#include "code_units.h"
#include "file_writing.h"
#include "input_file.h"
#include "text_blocks.h"
#include "titles.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace {

class LineCopier {
public:
    LineCopier(UnpackedDevice& from, const TableFormat& format, const LineChoice& choice,
               QIODevice& to)
        : m_from(from), m_format(format), m_choice(choice), m_to(to) {}

    void run();
    bool hasReadFailed() const { return m_readFailed; }
    bool hasWriteFailed() const { return m_writeFailed; }

private:
    bool fill();
    void takeMark();
    void takeBlock();
    void takeLines();
    void takeLine(std::string_view line);
    bool isHead(std::string_view line);
    std::string_view withoutEnd(std::string_view line) const;
    const char* afterLine(const char* from, const char* end) const;
    void write(std::string_view text);
    void flush();

    std::string_view rest() const { return viewOf(m_buffer).substr(static_cast<size_t>(m_taken)); }

    UnpackedDevice& m_from;
    const TableFormat& m_format;
    const LineChoice& m_choice;
    QIODevice& m_to;
    CodeUnits m_units;
    QByteArray m_buffer; // whole lines that were taken, then what was read after them
    qsizetype m_taken = 0;
    qint64 m_line = 0;         // the last line taken
    size_t m_next = 0;         // of the lines listed
    QByteArray m_header;       // as it stands, without its end
    std::string_view m_copied; // in the buffer, to be written
    bool m_readFailed = false;
    bool m_writeFailed = false;
};

void LineCopier::run() {
    bool isStart = true;
    while (!m_writeFailed && fill()) {
        if (std::exchange(isStart, false))
            takeMark();
        takeBlock();
        flush();
    }
    if (!rest().empty())
        takeLine(rest());
    flush();
}

// Reads a block after what was not taken yet. Blocks grow with it, so that a long line is read in
// linear time.
bool LineCopier::fill() {
    m_buffer.remove(0, m_taken);
    m_taken = 0;
    const qsizetype start = m_buffer.size(), room = std::max(tableBlockSize, start);
    m_buffer.resize(start + room);
    const qint64 count = m_from.read(m_buffer.data() + start, room);
    m_readFailed = count < 0;
    m_buffer.resize(start + static_cast<qsizetype>(std::max<qint64>(count, 0)));
    return count > 0;
}

// The mark belongs to the text, not to its first line.
void LineCopier::takeMark() {
    m_units = codeUnitsOf(m_buffer);
    write(rest().substr(0, m_units.markSize));
    m_taken += static_cast<qsizetype>(m_units.markSize);
}

// A block without any line listed is copied as a whole, even if it ends inside a line.
void LineCopier::takeBlock() {
    const bool isPlain = m_units.width == 1 && !m_from.endsLinesByReturn();
    if (m_choice.areKept || !isPlain) {
        takeLines();
        return;
    }
    const std::string_view block = rest();
    const qint64 ends = lineFeeds(block);
    if (m_next < m_choice.lines.size() && m_choice.lines[m_next] <= m_line + ends + 1) {
        takeLines();
        return;
    }
    m_line += ends;
    write(block);
    m_taken = m_buffer.size();
}

void LineCopier::takeLines() {
    const char* const end = m_buffer.constData() + m_buffer.size();
    const char* at = m_buffer.constData() + m_taken;
    while (const char* const after = afterLine(at, end)) {
        takeLine({at, static_cast<size_t>(after - at)});
        at = after;
    }
    m_taken = at - m_buffer.constData();
}

void LineCopier::takeLine(std::string_view line) {
    ++m_line;
    const bool isListed = m_next < m_choice.lines.size() && m_choice.lines[m_next] == m_line;
    m_next += isListed ? 1 : 0;
    if (isListed == m_choice.areKept || (m_choice.areKept && isHead(line)))
        write(line);
}

bool LineCopier::isHead(std::string_view line) {
    if (m_line == m_format.headerLine)
        m_header = bytesOf(withoutEnd(line));
    return m_line < m_format.firstDataLine ||
           (m_format.hasComments && line.size() >= m_units.width &&
            m_units.isAt(line.data(), '#')) ||
           (!m_header.isEmpty() && line.starts_with(viewOf(m_header)) &&
            withoutEnd(line) == viewOf(m_header));
}

std::string_view LineCopier::withoutEnd(std::string_view line) const {
    const size_t width = m_units.width;
    while (line.size() >= width &&
           (m_units.isAt(line.end() - width, '\n') || m_units.isAt(line.end() - width, '\r')))
        line.remove_suffix(width);
    return line;
}

// Where the line ends; null where that is not before `end`.
const char* LineCopier::afterLine(const char* from, const char* end) const {
    const bool areReturnsEnds = m_from.endsLinesByReturn();
    const size_t width = m_units.width;
    if (width == 1 && !areReturnsEnds) {
        const void* const found = std::memchr(from, '\n', static_cast<size_t>(end - from));
        return found ? static_cast<const char*>(found) + 1 : nullptr;
    }
    for (; static_cast<size_t>(end - from) >= width; from += width)
        if (m_units.isAt(from, '\n') || (areReturnsEnds && m_units.isAt(from, '\r')))
            return from + width;
    return nullptr;
}

// Collects what follows each other in the buffer.
void LineCopier::write(std::string_view text) {
    if (m_copied.end() == text.begin()) {
        m_copied = {m_copied.data(), m_copied.size() + text.size()};
        return;
    }
    flush();
    m_copied = text;
}

void LineCopier::flush() {
    if (!writeAll(m_to, {m_copied.data(), std::ssize(m_copied)}))
        m_writeFailed = true;
    m_copied = {};
}

} // namespace

std::optional<Refusal> copyLines(const QString& path, const TableFormat& format,
                                 const LineChoice& choice, QIODevice& to) {
    InputFile input(path, UnpackedDevice::LineEnds::AsTheyAre);
    if (std::optional<Refusal> refusal = input.open())
        return refusal;
    LineCopier copier(input.text(), format, choice, to);
    copier.run();
    if (copier.hasReadFailed())
        return input.failure();
    if (copier.hasWriteFailed())
        return Refusal{RefusalCode::Unwritable, to.errorString(), {}, {}};
    return std::nullopt;
}
