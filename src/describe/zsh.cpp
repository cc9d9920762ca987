#include "completion.h"
#include "options.h"

namespace {

constexpr const char* frame = R"(#compdef pelmark-tools
# Made from the program's table of commands.
if (( CURRENT == 2 )); then
    local -a commands=(
@COMMANDS@    )
    local -a options=(
@OPTIONS@    )
    _describe command commands
    _describe -o option options
    return
fi
local command=$words[2]
shift words
(( CURRENT-- ))
case $command in
@CASES@esac
)";

QByteArray quoted(QByteArray text) {
    return '\'' + text.replace('\'', "'\\''") + '\'';
}

// An option's explanation stands in brackets.
QByteArray explanation(const OptionSpec& option) {
    return '[' + QByteArray(option.help).replace('[', "\\[").replace(']', "\\]") + ']';
}

// What follows the option: the name of its value, and what completes that.
QByteArray valueOf(const OptionSpec& option) {
    if (option.value == nullptr)
        return {};
    QByteArray action;
    if (!option.choices.empty())
        action = '(' + choicesOf(option) + ')';
    else if (option.takesFile())
        action = "_files";
    return (hasValue(option) ? ":" : "::") + QByteArray(option.value) + ':' + action;
}

// Between the option's name and its explanation: how its value may follow.
QByteArray joint(const OptionSpec& option, const QByteArray& name) {
    if (option.value == nullptr)
        return {};
    if (!name.startsWith("--"))
        return "+";
    return hasValue(option) ? "=" : "=-";
}

QByteArray argumentsOf(const OptionSpec& option) {
    const QByteArrayList names = namesOf(option);
    const QByteArray excluded = option.isRepeated ? QByteArray("*") : '(' + names.join(' ') + ')';
    QByteArray all;
    for (const QByteArray& name : names)
        all +=
            "        " +
            quoted(excluded + name + joint(option, name) + explanation(option) + valueOf(option)) +
            " \\\n";
    return all;
}

QByteArray completionOf(const CommandSpec& command) {
    QByteArray all;
    for (const OptionSpec& option : allOptions(command))
        all += argumentsOf(option);
    return QByteArray(command.name) + ")\n    _arguments -s \\\n" + all +
           "        '*:FILE:_files'\n    ;;\n";
}

QByteArray described(const QByteArray& name, const char* text) {
    return "        " + quoted(name + ':' + text) + '\n';
}

QByteArray described(const OptionSpec& option) {
    QByteArray all;
    for (const QByteArray& name : namesOf(option))
        all += described(name, option.help);
    return all;
}

} // namespace

QByteArray zshCompletion(const std::vector<CommandSpec>& commands) {
    QByteArray names, cases;
    for (const CommandSpec& command : commands) {
        names += described(command.name, command.summary);
        cases += completionOf(command);
    }
    return QByteArray(frame)
        .replace("@COMMANDS@", names)
        .replace("@OPTIONS@", described(helpOption) + described(versionOption))
        .replace("@CASES@", cases);
}
