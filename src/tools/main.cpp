#include "command.h"
#include "exit_status.h"

#include <QFile>
#include <cstdio>
#include <new>
#include <unistd.h>

// Files that are half written are removed on the way out.
static int runWithinMemory(const QByteArrayList& words, Streams& streams) {
    try {
        return runCommandLine(words, streams);
    } catch (const std::bad_alloc&) {
        streams.error.write("pelmark-tools: there is not enough memory for this.\n");
        return StatusUnwritable;
    }
}

int main(int argc, char* argv[]) {
    QFile out, error;
    if (!out.open(stdout, QIODevice::WriteOnly) ||
        !error.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return StatusUnwritable;
    Streams streams{out, error, isatty(STDERR_FILENO) != 0};
    const int status = runWithinMemory({argv + 1, argv + argc}, streams);
    return out.flush() ? status : StatusUnwritable;
}
