#include "prepare_command.h"

#include "column_option.h"
#include "inputs.h"
#include "prepare.h"
#include "prepare_arguments.h"
#include "prepare_words.h"
#include "safe_output.h"
#include "table_head.h"
#include "unpacked.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <list>

namespace {

ExitStatus statusOf(RefusalCode code) {
    switch (code) {
    case RefusalCode::Unreadable:
    case RefusalCode::Damaged:
        return StatusUnreadable;
    case RefusalCode::Unwritable:
        return StatusUnwritable;
    case RefusalCode::UnknownColumn:
        return StatusWrongCall;
    default:
        return StatusNotUnderstood;
    }
}

// The command line with an option more, in place of the same option where it had one.
QByteArray commandWith(const QByteArrayList& words, const QByteArray& addition) {
    const QByteArray name = addition.left(addition.indexOf(' '));
    QByteArray command("pelmark-tools prepare");
    bool isValue = false;
    for (const QByteArray& word : words) {
        const bool isSame = name != "--where" && (word == name || word.startsWith(name + '='));
        if (!isSame && !isValue)
            command += ' ' + shellQuoted(word);
        isValue = isSame && word == name && addition.contains(' ');
    }
    return command + ' ' + addition;
}

class Prepare {
public:
    Prepare(const Arguments& arguments, Streams& streams)
        : m_arguments(arguments), m_streams(streams) {}

    int run();

private:
    std::optional<Failure> readInputs();
    std::variant<PrepareOptions, Failure> readOptions();
    std::optional<Failure> openOutputs();
    SafeOutput* open(const char* option, std::optional<Failure>& failure);
    int refuse(const Refusal& refusal);
    int finish(const PrepareReport& report);
    std::function<void(qint64)> progress();
    int end(const Failure& failure) {
        if (!failure.message.isEmpty())
            complain(m_streams, failure.message);
        return failure.status;
    }

    const Arguments& m_arguments;
    Streams& m_streams;
    Inputs m_inputs;
    Inputs m_positions;
    std::list<SafeOutput> m_outputs; // in the order in which they are put in place: the table last
    SafeOutput* m_output = nullptr;
    SafeOutput* m_dropped = nullptr;
    SafeOutput* m_json = nullptr;
};

std::optional<Failure> Prepare::readInputs() {
    for (const QByteArray& file : m_arguments.files)
        if (std::optional<Failure> failure = m_inputs.add(file))
            return failure;
    if (const auto file = m_arguments.value("--positions"))
        if (std::optional<Failure> failure = m_positions.add(*file))
            return failure;
    m_inputs.protect(m_positions);
    return std::nullopt;
}

// Only --test needs the table to tell what its value is; any fault there is met again later.
std::variant<PrepareOptions, Failure> Prepare::readOptions() {
    TableHead head;
    QFile file(m_inputs.paths()[0]);
    if (m_arguments.has("--test") && file.open(QIODevice::ReadOnly)) {
        UnpackedDevice unpacked(file);
        if (unpacked.open(QIODevice::ReadOnly))
            head = readTableHead(unpacked);
    }
    auto options = prepareOptions(
        m_arguments, {head.text.constData(), static_cast<size_t>(head.text.size())}, head.isWhole);
    if (auto* read = std::get_if<PrepareOptions>(&options); read && !m_positions.paths().isEmpty())
        read->positionsFile = m_positions.paths()[0];
    return options;
}

SafeOutput* Prepare::open(const char* option, std::optional<Failure>& failure) {
    const bool isTable = qstrcmp(option, "--output") == 0;
    const std::optional<QByteArray> path =
        isTable ? m_arguments.value(option).value_or("-") : m_arguments.value(option);
    if (!path || failure)
        return nullptr;
    m_outputs.emplace_back(*path, option);
    failure = m_outputs.back().open(m_inputs);
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

std::function<void(qint64)> Prepare::progress() {
    if (!m_streams.isErrorTerminal || m_arguments.has("--quiet"))
        return [](qint64) {};
    return [this](qint64 bytes) {
        m_streams.error.write("\r\033[K" + QByteArray::number(bytes / 1'000'000) + " MB read");
    };
}

int Prepare::refuse(const Refusal& refusal) {
    const QString where = refusal.line > 0
                              ? QStringLiteral("%1:%2: ").arg(m_inputs.names()[0]).arg(refusal.line)
                              : QString();
    complain(m_streams, where + m_inputs.named(refusal.message));
    if (!refusal.candidates.isEmpty())
        m_streams.error.write("  to choose from: " + refusal.candidates.join(", ") + '\n');
    if (!refusal.options.isEmpty())
        m_streams.error.write(refusal.options.size() == 1 ? "  This decides:\n"
                                                          : "  Each of these decides:\n");
    for (const QByteArray& option : refusal.options)
        m_streams.error.write("    " + commandWith(m_arguments.words, option) + '\n');
    return statusOf(refusal.code);
}

int Prepare::finish(const PrepareReport& report) {
    const QByteArray output = m_arguments.value("--output").value_or("-");
    const PreparedTable table{
        m_inputs.names(),
        output == "-" ? QStringLiteral("standard output") : QFile::decodeName(output), report};
    if (m_json != nullptr)
        m_json->file().write(QJsonDocument(jsonOf(table)).toJson());
    for (SafeOutput& each : m_outputs)
        if (const std::optional<Failure> failure = each.commit())
            return end(*failure);
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
    if (const std::optional<Failure> failure = readInputs())
        return end(*failure);
    const std::variant<PrepareOptions, Failure> options = readOptions();
    if (const auto* failure = std::get_if<Failure>(&options))
        return end(*failure);
    if (const std::optional<Failure> failure = openOutputs())
        return end(*failure);
    const PrepareJob job{m_inputs.paths(), std::get<PrepareOptions>(options),
                         m_dropped != nullptr ? &m_dropped->file() : nullptr, progress(),
                         m_inputs.names()};
    const auto result = prepare(job, m_output->file());
    if (m_streams.isErrorTerminal && !m_arguments.has("--quiet"))
        m_streams.error.write("\r\033[K");
    if (const auto* refusal = std::get_if<Refusal>(&result))
        return refuse(*refusal);
    return finish(std::get<PrepareReport>(result));
}

} // namespace

int prepareCommand(const Arguments& arguments, Streams& streams) {
    return Prepare(arguments, streams).run();
}
