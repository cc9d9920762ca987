#include "completion.h"
#include "options.h"

namespace {

// `words` stays empty where nothing can be known. The function returns where a file is expected,
// which bash then completes itself.
constexpr const char* frame = R"(# Completes pelmark-tools in bash; made from its table of commands.
_pelmark_tools() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words=
    # Bash takes the = of --option=value for a word.
    if [[ $word == = ]]; then
        word=
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        words='@NAMES@'
    else
        case ${COMP_WORDS[1]} in
@COMMANDS@        esac
    fi
    compopt +o bashdefault +o default
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o bashdefault -o default -F _pelmark_tools pelmark-tools
)";

constexpr const char* commandFrame = R"(        @NAME@)
            case $before in
@VALUES@            *)
                [[ $word == -* ]] || return
                words='@OPTIONS@'
                ;;
            esac
            ;;
)";

// A branch for the options of which the next word is the value.
QByteArray branch(const QByteArrayList& options, const QByteArray& what) {
    return options.isEmpty() ? QByteArray()
                             : "            " + options.join(" | ") + ") " + what + ";;\n";
}

QByteArray branches(const CommandSpec& command) {
    QByteArray choices;
    QByteArrayList files, others;
    for (const OptionSpec& option : command.options) {
        if (!hasValue(option))
            continue;
        if (!option.choices.empty())
            choices += branch(namesOf(option), "words='" + choicesOf(option) + "' ");
        else
            (option.takesFile() ? files : others) += namesOf(option);
    }
    return choices + branch(files, "return ") + branch(others, "");
}

QByteArray completionOf(const CommandSpec& command) {
    QByteArrayList options;
    for (const OptionSpec& option : allOptions(command))
        options += namesOf(option);
    return QByteArray(commandFrame)
        .replace("@NAME@", command.name)
        .replace("@VALUES@", branches(command))
        .replace("@OPTIONS@", options.join(' '));
}

} // namespace

QByteArray bashCompletion(const std::vector<CommandSpec>& commands) {
    QByteArray cases;
    QByteArrayList names;
    for (const CommandSpec& command : commands) {
        cases += completionOf(command);
        names += command.name;
    }
    names += namesOf(helpOption) + namesOf(versionOption);
    return QByteArray(frame).replace("@COMMANDS@", cases).replace("@NAMES@", names.join(' '));
}
