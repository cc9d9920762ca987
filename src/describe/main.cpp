// Usage: pelmark-describe bash|zsh|fish, or pelmark-describe manual <PAGE
// Writes a shell's completion for pelmark-tools, or its manual page, to standard output.
#include "completion.h"
#include "manual.h"

#include <QFile>
#include <cstdio>

namespace {

QByteArray description(const QByteArray& what) {
    if (what == "bash")
        return bashCompletion(commands());
    if (what == "zsh")
        return zshCompletion(commands());
    if (what == "fish")
        return fishCompletion(commands());
    QFile in;
    if (what == "manual" && in.open(stdin, QIODevice::ReadOnly))
        return manualPage(in.readAll(), commands());
    return {};
}

} // namespace

int main(int argc, char* argv[]) {
    const QByteArray text = description(argc == 2 ? argv[1] : "");
    QFile out;
    const bool isWritten = !text.isEmpty() && out.open(stdout, QIODevice::WriteOnly) &&
                           out.write(text) == text.size() && out.flush();
    return isWritten ? 0 : 1;
}
