#include "input_file.h"

#include "table_head.h"
#include "titles.h"

#include <algorithm>

namespace {

std::variant<Understanding, Refusal> understandFile(const QString& path,
                                                    const PrepareOptions& options) {
    InputFile input(path);
    if (const std::optional<Refusal> refusal = input.open())
        return *refusal;
    const TableHead head = readTableHead(input.text());
    if (head.isFailed)
        return input.failure();
    return understand(viewOf(head.text), head.isWhole, options);
}

// As they are compared to find columns: one input may have its first title after a "#".
bool areSameTitles(const QList<QByteArray>& a, const QList<QByteArray>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return normalTitle(viewOf(x)) == normalTitle(viewOf(y));
    });
}

} // namespace

std::optional<Refusal> InputFile::open() {
    const auto refusal = [&](RefusalCode code, const QString& why) {
        return Refusal{code, m_path + QStringLiteral(": ") + why, {}, {}};
    };
    if (!m_file.open(QIODevice::ReadOnly))
        return refusal(RefusalCode::Unreadable, m_file.errorString());
    if (!m_unpacked.open(QIODevice::ReadOnly))
        return failure();
    const QString kind = foreignKind(m_unpacked.start());
    if (kind.isEmpty())
        return std::nullopt;
    return refusal(RefusalCode::ForeignFile,
                   QStringLiteral("this is %1, not a table of results.").arg(kind));
}

Refusal InputFile::failure() const {
    return {m_unpacked.isDamaged() ? RefusalCode::Damaged : RefusalCode::Unreadable,
            m_path + QStringLiteral(": ") + m_unpacked.errorString(),
            {},
            {}};
}

std::variant<QList<Understanding>, Refusal> understandFiles(const QStringList& paths,
                                                            const PrepareOptions& options) {
    QList<Understanding> tables;
    for (const QString& path : paths) {
        const auto table = understandFile(path, options);
        if (const auto* refusal = std::get_if<Refusal>(&table)) {
            Refusal refused = *refusal;
            refused.input = tables.size();
            return refused;
        }
        tables.append(std::get<Understanding>(table));
        if (!areSameTitles(tables.last().format.titles, tables.first().format.titles))
            return Refusal{RefusalCode::DifferentColumns,
                           QStringLiteral("%1 has other columns than %2: prepare them one by one.")
                               .arg(path, paths.first()),
                           {},
                           {}};
    }
    return tables;
}
