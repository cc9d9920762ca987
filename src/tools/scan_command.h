#pragma once

#include "command.h"
#include "failure.h"
#include "inputs.h"
#include "prepare_options.h"
#include "refusal.h"
#include "safe_output.h"

#include <functional>
#include <initializer_list>
#include <list>
#include <optional>
#include <variant>

// What the commands that read result files by the rule of prepare() have in common.
class ScanCommand {
public:
    // `name` is the command's, for the command lines that are proposed; `pOption` is its option for
    // the column of p, where --p says something else.
    ScanCommand(const char* name, const Arguments& arguments, Streams& streams,
                const char* pOption = "--p")
        : m_name(name), m_pOption(pOption), m_arguments(arguments), m_streams(streams) {}

    // Opens the files, and the table of positions that an option may name.
    std::optional<Failure> readInputs(const QByteArrayList& files);

    // The same for the parts of one scan: fails where a file comes twice.
    std::optional<Failure> readParts(const QByteArrayList& files);
    Inputs& inputs() { return m_inputs; }

    // The options that say what the columns are; the first file tells some of them apart.
    std::variant<PrepareOptions, Failure> readOptions();

    // Opens the outputs that these options name, and --output: the table, on standard output where
    // it is not given. `isReadable`: the table may go to a terminal.
    std::optional<Failure> openOutputs(std::initializer_list<const char*> options,
                                       bool isReadable = false);

    // The output of an option, open for reading and writing; null where it is not given.
    QFile* output(const char* option);
    QString tableName() const; // as the user calls it

    // Puts all outputs in place, the table last.
    std::optional<Failure> commitOutputs();

    // A text that names --p, as the rules for columns do, with this command's option instead.
    QString withPOption(QString text) const;

    // Reports how far the reading is, where somebody watches.
    std::function<void(qint64 bytes)> progress();
    void clearProgress();

    // Says why the command ends, and returns its exit status.
    int end(const Failure& failure);

    // The same for a file that is not understood.
    int refuse(const Refusal& refusal);

private:
    QString whereOf(const Refusal& refusal) const;
    std::optional<Failure> openOutput(const char* option, const QByteArray& path, bool isReadable);
    QByteArray tablePath() const { return m_arguments.value("--output").value_or("-"); }
    bool isWatched() const { return m_streams.isErrorTerminal && !m_arguments.has("--quiet"); }

    struct Output {
        Output(const char* name, const QByteArray& path, bool isReadable)
            : option(name), place(path), file(path, name, isReadable) {}

        const QByteArray option;
        const QByteArray place;
        SafeOutput file;
    };

    const char* const m_name;
    const char* const m_pOption;
    const Arguments& m_arguments;
    Streams& m_streams;
    Inputs m_inputs;
    Inputs m_positions;
    std::list<Output> m_outputs; // in the order in which they are put in place
};
