#include "prepare_command.h"

#include "file_writing.h"
#include "prepare.h"
#include "prepare_words.h"
#include "scan_command.h"

#include <QFileInfo>
#include <QJsonDocument>

namespace {

void warnOfHiddenName(const QString& name, Streams& streams) {
    const QString lower = name.toLower();
    if (QFileInfo(name).isFile() && !lower.endsWith(".txt") && !lower.endsWith(".csv"))
        complain(streams, name + QStringLiteral(": the window's dialog shows only names that end "
                                                "in .txt or .csv. Rename the file to open it."));
}

} // namespace

int prepareCommand(const Arguments& arguments, Streams& streams) {
    ScanCommand command("prepare", arguments, streams);
    if (const auto failure = command.readParts(arguments.files))
        return command.end(*failure);
    const std::variant<PrepareOptions, Failure> options = command.readOptions();
    if (const auto* failure = std::get_if<Failure>(&options))
        return command.end(*failure);
    if (const std::optional<Failure> failure = command.openOutputs({"--dropped", "--json"}))
        return command.end(*failure);
    const PrepareJob job{command.inputs().paths(), std::get<PrepareOptions>(options),
                         command.output("--dropped"), command.progress(), command.inputs().names()};
    const auto result = prepare(job, *command.output("--output"));
    command.clearProgress();
    if (const auto* refusal = std::get_if<Refusal>(&result))
        return command.refuse(*refusal);
    const PreparedTable table{command.inputs().names(), command.tableName(),
                              std::get<PrepareReport>(result)};
    if (QFile* const json = command.output("--json"))
        writeAll(*json, QJsonDocument(jsonOf(table)).toJson());
    if (const std::optional<Failure> failure = command.commitOutputs())
        return command.end(*failure);
    if (!arguments.has("--quiet"))
        streams.error.write(textOf(table));
    if (arguments.value("--output").value_or("-") != "-")
        warnOfHiddenName(table.output, streams);
    return StatusFine;
}
