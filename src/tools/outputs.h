#pragma once

#include "command.h"
#include "safe_output.h"

#include <initializer_list>
#include <list>
#include <optional>

// The files that a command's options name for its output, all of them complete or none in place.
class Outputs {
public:
    explicit Outputs(const Arguments& arguments) : m_arguments(arguments) {}

    // Opens those of these options that were given, and at last --output, which is standard output
    // where it was not. No two may be the same.
    std::optional<Failure> open(std::initializer_list<const char*> options, const Inputs& inputs);

    // Null where the option was not given.
    QFile* file(const char* option);
    QFile& main() { return *file("--output"); }

    // What the user calls the file of --output.
    QString mainName() const;

    // Puts them in place in that order: the main one last.
    std::optional<Failure> commit();

private:
    struct Output {
        Output(const char* name, const QByteArray& path) : option(name), file(path) {}

        const char* option;
        SafeOutput file;
    };
    QByteArray mainPath() const { return m_arguments.value("--output").value_or("-"); }

    const Arguments& m_arguments;
    std::list<Output> m_outputs;
};
