#include "completion.h"
#include "options.h"

namespace {

constexpr const char* head = R"(# Completes pelmark-tools in fish; made from its table of commands.
function __pelmark_tools_command -a name
    set -l words (commandline -opc)
    test "$words[2]" = "$name"
end

complete -c pelmark-tools -f
)";

QByteArray quoted(QByteArray text) {
    return '\'' + text.replace('\\', "\\\\").replace('\'', "\\'") + '\'';
}

// A rule for when the words before name the command, or, where it is null, none yet.
QByteArray rule(const char* command, const QByteArray& what) {
    return "complete -c pelmark-tools -n " +
           quoted("__pelmark_tools_command " + QByteArray(command == nullptr ? "''" : command)) +
           ' ' + what + '\n';
}

QByteArray valueOf(const OptionSpec& option) {
    if (!hasValue(option))
        return {};
    if (!option.choices.empty())
        return "-x -a " + quoted(choicesOf(option)) + ' ';
    return option.takesFile() ? "-r -F " : "-x ";
}

QByteArray ruleFor(const char* command, const OptionSpec& option) {
    QByteArray names;
    for (const QByteArray& name : namesOf(option))
        names += name.startsWith("--") ? "-l " + name.mid(2) + ' ' : "-s " + name.mid(1) + ' ';
    return rule(command, names + valueOf(option) + "-d " + quoted(option.help));
}

QByteArray rulesFor(const CommandSpec& command) {
    QByteArray all =
        '\n' + rule(nullptr, "-a " + QByteArray(command.name) + " -d " + quoted(command.summary)) +
        rule(command.name, "-F");
    for (const OptionSpec& option : allOptions(command))
        all += ruleFor(command.name, option);
    return all;
}

} // namespace

QByteArray fishCompletion(const std::vector<CommandSpec>& commands) {
    QByteArray all = head + ruleFor(nullptr, helpOption) + ruleFor(nullptr, versionOption);
    for (const CommandSpec& command : commands)
        all += rulesFor(command);
    return all;
}
