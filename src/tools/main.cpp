#include "command.h"
#include "exit_status.h"

#include <QFile>
#include <cstdio>
#include <unistd.h>

int main(int argc, char* argv[]) {
    QFile out, error;
    if (!out.open(stdout, QIODevice::WriteOnly) ||
        !error.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return StatusUnwritable;
    Streams streams{out, error, isatty(STDERR_FILENO) != 0};
    const int status = runCommandLine({argv + 1, argv + argc}, streams);
    return out.flush() ? status : StatusUnwritable;
}
