#include "prepare_command.h"

#include "prepare.h"
#include "prepare_words.h"
#include "safe_output.h"
#include "scan_command.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <list>

namespace {

class Prepare {
public:
    Prepare(const Arguments& arguments, Streams& streams)
        : m_arguments(arguments), m_streams(streams), m_command("prepare", arguments, streams) {}

    int run();

private:
    std::optional<Failure> openOutputs();
    SafeOutput* open(const char* option, std::optional<Failure>& failure);
    int finish(const PrepareReport& report);

    const Arguments& m_arguments;
    Streams& m_streams;
    ScanCommand m_command;
    std::list<SafeOutput> m_outputs; // in the order in which they are put in place: the table last
    SafeOutput* m_output = nullptr;
    SafeOutput* m_dropped = nullptr;
    SafeOutput* m_json = nullptr;
};

SafeOutput* Prepare::open(const char* option, std::optional<Failure>& failure) {
    const bool isTable = qstrcmp(option, "--output") == 0;
    const std::optional<QByteArray> path =
        isTable ? m_arguments.value(option).value_or("-") : m_arguments.value(option);
    if (!path || failure)
        return nullptr;
    m_outputs.emplace_back(*path, option);
    failure = m_outputs.back().open(m_command.inputs());
    return &m_outputs.back();
}

std::optional<Failure> Prepare::openOutputs() {
    QByteArrayList paths{m_arguments.value("--output").value_or("-")};
    for (const char* option : {"--dropped", "--json"})
        if (const auto path = m_arguments.value(option)) {
            for (const QByteArray& other : std::as_const(paths))
                if (leadToOneFile(other, *path))
                    return Failure{StatusWrongCall,
                                   QStringLiteral("%1 %2: two outputs cannot share a file.")
                                       .arg(QLatin1String(option), QString::fromUtf8(*path))};
            paths.append(*path);
        }
    std::optional<Failure> failure;
    m_dropped = open("--dropped", failure);
    m_json = open("--json", failure);
    m_output = open("--output", failure);
    return failure;
}

int Prepare::finish(const PrepareReport& report) {
    const QByteArray output = m_arguments.value("--output").value_or("-");
    const PreparedTable table{
        m_command.inputs().names(),
        output == "-" ? QStringLiteral("standard output") : QFile::decodeName(output), report};
    if (m_json != nullptr)
        m_json->file().write(QJsonDocument(jsonOf(table)).toJson());
    for (SafeOutput& each : m_outputs)
        if (const std::optional<Failure> failure = each.commit())
            return m_command.end(*failure);
    if (!m_arguments.has("--quiet"))
        m_streams.error.write(textOf(table));
    const QByteArray lower = output.toLower();
    if (output != "-" && QFileInfo(table.output).isFile() && !lower.endsWith(".txt") &&
        !lower.endsWith(".csv"))
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
    if (const std::optional<Failure> failure = openOutputs())
        return m_command.end(*failure);
    const PrepareJob job{m_command.inputs().paths(), std::get<PrepareOptions>(options),
                         m_dropped != nullptr ? &m_dropped->file() : nullptr, m_command.progress(),
                         m_command.inputs().names()};
    const auto result = prepare(job, m_output->file());
    m_command.clearProgress();
    if (const auto* refusal = std::get_if<Refusal>(&result))
        return m_command.refuse(*refusal);
    return finish(std::get<PrepareReport>(result));
}

} // namespace

int prepareCommand(const Arguments& arguments, Streams& streams) {
    return Prepare(arguments, streams).run();
}
