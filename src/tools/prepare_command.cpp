#include "prepare_command.h"

#include "outputs.h"
#include "prepare.h"
#include "prepare_words.h"
#include "scan_command.h"

#include <QFileInfo>
#include <QJsonDocument>

namespace {

class Prepare {
public:
    Prepare(const Arguments& arguments, Streams& streams)
        : m_arguments(arguments), m_streams(streams), m_command("prepare", arguments, streams),
          m_outputs(arguments) {}

    int run();

private:
    int finish(const PrepareReport& report);

    const Arguments& m_arguments;
    Streams& m_streams;
    ScanCommand m_command;
    Outputs m_outputs;
};

int Prepare::finish(const PrepareReport& report) {
    const PreparedTable table{m_command.inputs().names(), m_outputs.mainName(), report};
    if (QFile* const json = m_outputs.file("--json"))
        json->write(QJsonDocument(jsonOf(table)).toJson());
    if (const std::optional<Failure> failure = m_outputs.commit())
        return m_command.end(*failure);
    if (!m_arguments.has("--quiet"))
        m_streams.error.write(textOf(table));
    const QString lower = table.output.toLower();
    if (m_arguments.value("--output").value_or("-") != "-" && QFileInfo(table.output).isFile() &&
        !lower.endsWith(".txt") && !lower.endsWith(".csv"))
        complain(m_streams,
                 table.output + QStringLiteral(": the window's dialog shows only names that end "
                                               "in .txt or .csv. Rename the file to open it."));
    return StatusFine;
}

int Prepare::run() {
    if (const auto failure = m_command.readInputs(m_arguments.files))
        return m_command.end(*failure);
    const std::variant<PrepareOptions, Failure> options = m_command.readOptions();
    if (const auto* failure = std::get_if<Failure>(&options))
        return m_command.end(*failure);
    if (const auto failure = m_outputs.open({"--dropped", "--json"}, m_command.inputs()))
        return m_command.end(*failure);
    const PrepareJob job{m_command.inputs().paths(), std::get<PrepareOptions>(options),
                         m_outputs.file("--dropped"), m_command.progress()};
    const auto result = prepare(job, m_outputs.main());
    m_command.clearProgress();
    if (const auto* refusal = std::get_if<Refusal>(&result))
        return m_command.refuse(*refusal);
    return finish(std::get<PrepareReport>(result));
}

} // namespace

int prepareCommand(const Arguments& arguments, Streams& streams) {
    return Prepare(arguments, streams).run();
}
