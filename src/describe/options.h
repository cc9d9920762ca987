#pragma once

#include "command.h"

// All options of a command, --help first.
inline std::vector<OptionSpec> allOptions(const CommandSpec& command) {
    std::vector<OptionSpec> all{helpOption};
    all.insert(all.end(), command.options.begin(), command.options.end());
    return all;
}

// -o and --output, or --json alone.
inline QByteArrayList namesOf(const OptionSpec& option) {
    return QByteArray(option.names).split(',');
}

inline QByteArray choicesOf(const OptionSpec& option) {
    return QByteArrayList(option.choices.begin(), option.choices.end()).join(' ');
}

// Whether the word after the option is its value in any case.
inline bool hasValue(const OptionSpec& option) {
    return option.value != nullptr && option.standard == nullptr;
}
