#pragma once

#include "command.h"
#include "failure.h"
#include "inputs.h"
#include "prepare_options.h"
#include "refusal.h"

#include <functional>
#include <optional>
#include <variant>

// What the commands that read result files by the rule of prepare() have in common.
class ScanCommand {
public:
    // `name` is the command's, for the command lines that are proposed.
    ScanCommand(const char* name, const Arguments& arguments, Streams& streams)
        : m_name(name), m_arguments(arguments), m_streams(streams) {}

    // Opens the files, and the table of positions that an option may name.
    std::optional<Failure> readInputs(const QByteArrayList& files);
    Inputs& inputs() { return m_inputs; }

    // The options that say what the columns are; the first file tells some of them apart.
    std::variant<PrepareOptions, Failure> readOptions();

    // Reports how far the reading is, where somebody watches.
    std::function<void(qint64 bytes)> progress();
    void clearProgress();

    // Says why the command ends, and returns its exit status.
    int end(const Failure& failure);

    // The same for a file that is not understood.
    int refuse(const Refusal& refusal);

private:
    QString whereOf(const Refusal& refusal) const;
    bool isWatched() const { return m_streams.isErrorTerminal && !m_arguments.has("--quiet"); }

    const char* const m_name;
    const Arguments& m_arguments;
    Streams& m_streams;
    Inputs m_inputs;
    Inputs m_positions;
};
