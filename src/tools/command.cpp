#include "command.h"

#include "exit_status.h"
#include "nearest.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <memory>
#include <string>

namespace {

constexpr const char* statuses = "Exit status: 0 fine; 1 the answer is no; 2 wrong call; 3 an "
                                 "input cannot be opened or read, or\n"
                                 "is damaged; 4 the output cannot be written, or memory runs out; "
                                 "5 the table is not\n"
                                 "understood, or you must choose.";

QByteArray overview() {
    QByteArray text("Usage: pelmark-tools COMMAND [OPTION...] FILE...\n\nCommands:\n");
    for (const CommandSpec& command : commands())
        text += "  " + QByteArray(command.name).leftJustified(10) + command.summary + '\n';
    return text +
           "\n`pelmark-tools COMMAND --help` explains a command, `--version` prints the version."
           "\n\n" +
           statuses + '\n';
}

int wrongCall(Streams& streams, const QByteArray& message) {
    complain(streams, QString::fromUtf8(message));
    return StatusWrongCall;
}

QByteArray suggestion(const QByteArray& word, const QList<QByteArray>& candidates) {
    const QByteArray best = nearest(word, candidates);
    return best.isEmpty() ? QByteArray(".") : "; did you mean " + best + '?';
}

// What the library stored, by the option's name.
struct Parsed {
    std::map<std::string, std::vector<std::string>> values;
    std::map<std::string, bool> flags;
    std::vector<std::string> files;
};

// Empty where it is one.
std::string notAChoice(const OptionSpec& spec, const std::string& value) {
    QByteArrayList choices;
    for (const char* choice : spec.choices) {
        if (value == choice)
            return {};
        choices += choice;
    }
    return value + " is none of " + choices.join(", ").toStdString() + '.';
}

// What the library says of an option without its value, or with several, in plain words.
QByteArray aboutCount(const CLI::ArgumentMismatch& error) {
    const QByteArray text(error.what());
    return text.left(text.indexOf(':')) +
           (text.endsWith(" missing") ? " lacks its value." : " can be given only once.");
}

void declare(const CommandSpec& command, CLI::App& app, Parsed& parsed) {
    app.add_option("FILE", parsed.files, "the files to read; - is standard input")->type_name("");
    for (const OptionSpec& spec : command.options) {
        const std::string name = spec.longName().toStdString();
        if (spec.value == nullptr) {
            app.add_flag(spec.names, parsed.flags[name], spec.help);
            continue;
        }
        CLI::Option* option = app.add_option(spec.names, parsed.values[name], spec.help);
        option->type_name(spec.value)->type_size(1)->expected(1);
        option->multi_option_policy(spec.isRepeated ? CLI::MultiOptionPolicy::TakeAll
                                                    : CLI::MultiOptionPolicy::Throw);
        option->allow_extra_args(false);
        if (!spec.choices.empty())
            option->check([&spec](const std::string& value) { return notAChoice(spec, value); });
    }
}

// As the library wants them: the last one first, and each option with a value.
std::vector<std::string> wordsToParse(const CommandSpec& command, const QByteArrayList& words) {
    std::vector<std::string> all;
    for (qsizetype i = 0; i < words.size(); ++i) {
        all.push_back(words[i].toStdString());
        bool isFollowed = false;
        words.value(i + 1).toInt(&isFollowed);
        for (const OptionSpec& option : command.options)
            if (option.standard != nullptr && words[i] == option.longName() && !isFollowed)
                all.back() += std::string("=") + option.standard;
    }
    std::reverse(all.begin(), all.end());
    return all;
}

Arguments argumentsOf(const Parsed& parsed) {
    Arguments arguments;
    for (const auto& [name, isSet] : parsed.flags)
        if (isSet)
            arguments.options[QByteArray::fromStdString(name)] = {QByteArray()};
    for (const auto& [name, values] : parsed.values)
        for (const std::string& value : values)
            arguments.options[QByteArray::fromStdString(name)].append(
                QByteArray::fromStdString(value));
    for (const std::string& file : parsed.files)
        arguments.files.append(QByteArray::fromStdString(file));
    return arguments;
}

// An option that does not exist, and the nearest that does. Of flags together, such as -qx, the
// word has those that do not.
QByteArray aboutExtras(const CommandSpec& command, const QByteArray& word) {
    QList<QByteArray> names{helpOption.longName()};
    for (const OptionSpec& option : command.options)
        names.append(option.longName());
    const qsizetype end = word.indexOf('=');
    const QByteArray name = end > 2 ? word.left(end) : word;
    const bool isLong = name.startsWith("--"); // of a letter alone, every other is near
    return "there is no option " + name + (isLong ? suggestion(name, names) : QByteArray(".")) +
           " See pelmark-tools " + command.name + " --help.";
}

int runCommand(const CommandSpec& command, const QByteArrayList& words, Streams& streams) {
    CLI::App app(command.summary, std::string("pelmark-tools ") + command.name);
    app.set_help_flag(helpOption.names, helpOption.help);
    app.footer(std::string(command.details) + "\n\n" + statuses);
    app.get_formatter()->column_width(30);
    app.allow_extras(); // so that they can be named
    Parsed parsed;
    declare(command, app, parsed);
    try {
        app.parse(wordsToParse(command, words));
    } catch (const CLI::CallForHelp&) {
        streams.out.write(QByteArray::fromStdString(app.help()));
        return StatusFine;
    } catch (const CLI::ArgumentMismatch& error) {
        return wrongCall(streams, aboutCount(error));
    } catch (const CLI::ParseError& error) {
        return wrongCall(streams, error.what());
    }
    if (!app.remaining().empty())
        return wrongCall(streams,
                         aboutExtras(command, QByteArray::fromStdString(app.remaining()[0])));
    Arguments arguments = argumentsOf(parsed);
    arguments.words = words;
    if (arguments.files.isEmpty())
        return wrongCall(streams, QByteArray("no file is named. See pelmark-tools ") +
                                      command.name + " --help.");
    return command.run(arguments, streams);
}

} // namespace

const OptionSpec helpOption{"-h,--help", nullptr, "print this help and exit"};
const OptionSpec versionOption{"--version", nullptr, "print the version and exit"};

QByteArray OptionSpec::longName() const {
    const QByteArray all(names);
    return all.mid(all.lastIndexOf(',') + 1);
}

bool OptionSpec::takesFile() const {
    return value != nullptr && (QByteArrayView(value) == "FILE" || QByteArrayView(value) == "OUT");
}

int runCommandLine(const QByteArrayList& words, Streams& streams) {
    if (words.isEmpty()) {
        streams.error.write(overview());
        return StatusWrongCall;
    }
    const QByteArray& name = words[0];
    if (name == "--help" || name == "-h" || name == "help") {
        streams.out.write(overview());
        return StatusFine;
    }
    if (name == versionOption.names) {
        streams.out.write("pelmark-tools " PELMARK_VERSION "\n");
        return StatusFine;
    }
    QList<QByteArray> names;
    for (const CommandSpec& command : commands()) {
        if (name == command.name)
            return runCommand(command, words.mid(1), streams);
        names.append(command.name);
    }
    names += {helpOption.longName(), versionOption.longName()};
    return wrongCall(streams,
                     (name.startsWith('-') ? "there is no option " : "there is no command ") +
                         name + suggestion(name, names) + " See pelmark-tools --help.");
}
