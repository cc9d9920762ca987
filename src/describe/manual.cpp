#include "manual.h"

#include "options.h"

#include <algorithm>
#include <string_view>

namespace {

QByteArray escaped(QByteArray text) {
    text.replace('\\', "\\e").replace('-', "\\-");
    return text.startsWith('.') || text.startsWith('\'') ? "\\&" + text : text;
}

// Lines as roff wants them: none begins like a request.
QByteArray paragraph(const QByteArray& text) {
    QByteArrayList lines = text.split('\n');
    for (QByteArray& line : lines)
        line = escaped(line);
    return lines.join('\n') + '\n';
}

// A sentence from a summary, which has neither a capital nor a stop.
QByteArray sentence(const char* summary) {
    const QByteArray text(summary);
    return text.left(1).toUpper() + text.mid(1) + ".\n";
}

QByteArray bold(const QByteArray& text) {
    return "\\fB" + escaped(text) + "\\fR";
}

QByteArray valueOf(const OptionSpec& option) {
    if (option.value == nullptr)
        return {};
    const QByteArray value = "\\fI" + escaped(option.value) + "\\fR";
    return option.standard == nullptr ? ' ' + value : " [" + value + ']';
}

QByteArray titleOf(const OptionSpec& option) {
    QByteArrayList names;
    for (const QByteArray& name : namesOf(option))
        names += bold(name);
    return names.join(", ") + valueOf(option);
}

bool areSame(const OptionSpec& a, const OptionSpec& b) {
    const auto text = [](const char* chars) { return std::string_view(chars ? chars : ""); };
    return text(a.names) == b.names && text(a.value) == text(b.value) && text(a.help) == b.help;
}

bool has(const CommandSpec& command, const OptionSpec& option) {
    const std::vector<OptionSpec> all = allOptions(command);
    return std::any_of(all.begin(), all.end(),
                       [&](const OptionSpec& other) { return areSame(option, other); });
}

// An option is explained at the first command that has it; a later one names it, and that command.
QByteArray optionsOf(const std::vector<CommandSpec>& commands, std::size_t index) {
    QByteArray all;
    std::vector<QByteArrayList> earlier(index);
    for (const OptionSpec& option : allOptions(commands[index])) {
        std::size_t first = 0;
        while (!has(commands[first], option))
            ++first;
        if (first == index)
            all += ".TP\n" + titleOf(option) + '\n' + paragraph(option.help);
        else
            earlier[first] += titleOf(option);
    }
    for (std::size_t i = 0; i < index; ++i)
        if (!earlier[i].isEmpty())
            all += ".PP\nAs for " + bold(commands[i].name) + ":\n" + earlier[i].join(",\n") + ".\n";
    return all;
}

} // namespace

QByteArray manualPage(QByteArray page, const std::vector<CommandSpec>& commands) {
    const QByteArray place(".\\\" The commands\n");
    if (!page.contains(place))
        return {};
    QByteArray all;
    for (std::size_t i = 0; i < commands.size(); ++i)
        all += ".SS " + QByteArray(commands[i].name) + '\n' + sentence(commands[i].summary) +
               paragraph(commands[i].details) + optionsOf(commands, i);
    return page.replace(place, all);
}
