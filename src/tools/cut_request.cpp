#include "cut_request.h"

#include <QFile>
#include <QFileInfo>

namespace {

// TABLE, or TABLE@LABEL where there is no file of that name.
QByteArray splitLabel(const QByteArray& word, std::optional<QByteArray>& label) {
    const qsizetype at = word.lastIndexOf('@');
    if (at < 1 || at + 1 == word.size() || QFileInfo::exists(QFile::decodeName(word)))
        return word;
    label = word.mid(at + 1);
    return word.left(at);
}

std::optional<Failure> readRegions(const Arguments& arguments, CutRequest& request) {
    for (const QByteArray& text : arguments.options.value("--region")) {
        const auto region = readRegion({text.constData(), static_cast<size_t>(text.size())});
        if (!region)
            return Failure{StatusWrongCall,
                           QStringLiteral("--region %1: write LABEL:FIRST-LAST, such as "
                                          "12:2,330,458-2,331,000.")
                               .arg(QString::fromUtf8(text))};
        request.regions.append({text, *region});
    }
    return std::nullopt;
}

std::optional<Failure> openFiles(const Arguments& arguments, ScanCommand& command,
                                 CutRequest& request) {
    QByteArrayList files{arguments.files[0]};
    for (const QByteArray& word : arguments.files.sliced(1)) {
        WantedTable& wanted = request.tables.emplace_back();
        files.append(splitLabel(word, wanted.label));
    }
    const QByteArrayList lists = arguments.options.value("--names");
    if (request.tables.empty() && request.regions.isEmpty() && lists.isEmpty())
        return Failure{StatusWrongCall,
                       QStringLiteral("nothing says which lines are meant. Name a table that the "
                                      "window saved, a --region or --names.")};
    return command.readInputs(files + lists);
}

Refusal ofInput(Refusal refusal, qsizetype input) {
    refusal.input = input;
    return refusal;
}

} // namespace

std::optional<int> readRequest(const Arguments& arguments, ScanCommand& command,
                               CutRequest& request) {
    if (const auto failure = readRegions(arguments, request))
        return command.end(*failure);
    if (const auto failure = openFiles(arguments, command, request))
        return command.end(*failure);
    const QStringList& paths = command.inputs().paths();
    qsizetype input = 0;
    for (WantedTable& wanted : request.tables) {
        auto table = readSavedTable(paths[++input]);
        if (const auto* refusal = std::get_if<Refusal>(&table))
            return command.refuse(ofInput(*refusal, input));
        wanted.table = std::get<SavedTable>(std::move(table));
    }
    while (++input < paths.size()) {
        auto names = readNames(paths[input]);
        if (const auto* refusal = std::get_if<Refusal>(&names))
            return command.refuse(ofInput(*refusal, input));
        request.lists.append(std::get<QList<QByteArray>>(std::move(names)));
    }
    return std::nullopt;
}
