#include "input_file.h"

#include "text_blocks.h"
#include "titles.h"

#include <algorithm>

namespace {

constexpr qsizetype headLines = 12'000;
constexpr qsizetype headBytes = 16 * 1024 * 1024;

// The first lines of an input, as many as understand() looks at.
std::variant<QByteArray, Refusal> headOf(const QString& path, bool& isWhole) {
    InputFile input(path);
    if (const std::optional<Refusal> refusal = input.open())
        return *refusal;
    TextBlocks blocks(input.text(), TextBlocks::defaultBlockSize, TextBlocks::Unmarked::AsTheyAre);
    QByteArray head;
    isWhole = false;
    for (qsizetype lines = 0; lines < headLines && head.size() < headBytes && !isWhole;) {
        isWhole = !blocks.next();
        if (blocks.failed())
            return input.failure();
        const std::string_view piece = isWhole ? std::string_view() : blocks.piece();
        head += bytesOf(piece);
        lines += std::count(piece.begin(), piece.end(), '\n');
    }
    return head;
}

} // namespace

std::optional<Refusal> InputFile::open() {
    constexpr qint64 kindBytes = 4096; // tell one kind of file from another
    const auto refusal = [&](RefusalCode code, const QString& why) {
        return Refusal{code, m_path + QStringLiteral(": ") + why, {}, {}};
    };
    if (!m_file.open(QIODevice::ReadOnly))
        return refusal(RefusalCode::Unreadable, m_file.errorString());
    const QString kind = foreignKind(m_file.peek(kindBytes));
    if (!kind.isEmpty())
        return refusal(RefusalCode::ForeignFile,
                       QStringLiteral("this is %1, not a table of results.").arg(kind));
    return m_unpacked.open(QIODevice::ReadOnly) ? std::nullopt : std::optional(failure());
}

Refusal InputFile::failure() const {
    return {m_unpacked.isDamaged() ? RefusalCode::Damaged : RefusalCode::Unreadable,
            m_path + QStringLiteral(": ") + m_unpacked.errorString(),
            {},
            {}};
}

std::variant<Understanding, Refusal> understandFile(const QString& path,
                                                    const PrepareOptions& options) {
    bool isWhole = false;
    const auto head = headOf(path, isWhole);
    if (const auto* refusal = std::get_if<Refusal>(&head))
        return *refusal;
    return understand(viewOf(std::get<QByteArray>(head)), isWhole, options);
}
