#pragma once

#include "streams.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <optional>
#include <vector>

// The words of a command line, sorted by option.
struct Arguments {
    QHash<QByteArray, QByteArrayList> options; // by long name; flags have an empty value
    QByteArrayList files;
    QByteArrayList words; // as they were typed, after the command's name

    bool has(const char* option) const { return options.contains(option); }
    std::optional<QByteArray> value(const char* option) const {
        const auto found = options.constFind(option);
        return found == options.constEnd() ? std::nullopt : std::optional(found->last());
    }
};

struct OptionSpec {
    const char* names; // "-o,--output": the long name last
    const char* value; // what stands for its value in the help: FILE or OUT for a file's name; null
                       // for a flag
    const char* help;
    std::vector<const char*> choices = {}; // the only values; empty for any
    bool isRepeated = false;
    const char* standard = nullptr; // the value where no number follows; null where one must

    QByteArray longName() const;
    bool takesFile() const;
};

// What every command accepts, beside its own options.
extern const OptionSpec helpOption;
// What stands in place of a command, beside helpOption.
extern const OptionSpec versionOption;

struct CommandSpec {
    const char* name;
    const char* summary; // one line
    const char* details; // after the options
    std::vector<OptionSpec> options;
    int (*run)(const Arguments&, Streams&);
};

// Every command of the program, which lists them beside its entry function. The help, the manual
// page and the completions of shells are made of this.
const std::vector<CommandSpec>& commands();

// Finds the command that the words after the program's name ask for, and runs it. Returns the exit
// status.
int runCommandLine(const QByteArrayList& words, Streams& streams);
