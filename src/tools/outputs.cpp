#include "outputs.h"

#include <algorithm>

std::optional<Failure> Outputs::open(std::initializer_list<const char*> options,
                                     const Inputs& inputs) {
    QByteArrayList paths{mainPath()};
    for (const char* option : options)
        if (const auto path = m_arguments.value(option)) {
            if (paths.contains(*path))
                return Failure{StatusWrongCall,
                               QStringLiteral("%1 %2: two outputs cannot share a file.")
                                   .arg(QLatin1String(option), QString::fromUtf8(*path))};
            paths.append(*path);
            m_outputs.emplace_back(option, *path);
        }
    m_outputs.emplace_back("--output", mainPath());
    for (Output& output : m_outputs)
        if (std::optional<Failure> failure = output.file.open(inputs))
            return failure;
    return std::nullopt;
}

QFile* Outputs::file(const char* option) {
    const auto found = std::find_if(m_outputs.begin(), m_outputs.end(), [&](const Output& output) {
        return qstrcmp(output.option, option) == 0;
    });
    return found == m_outputs.end() ? nullptr : &found->file.file();
}

QString Outputs::mainName() const {
    const QByteArray path = mainPath();
    return path == "-" ? QStringLiteral("standard output") : QFile::decodeName(path);
}

std::optional<Failure> Outputs::commit() {
    for (Output& output : m_outputs)
        if (std::optional<Failure> failure = output.file.commit())
            return failure;
    return std::nullopt;
}
