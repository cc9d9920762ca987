#include "driver/give_up.h"

#include <cstdio>
#include <cstdlib>

void giveUp(int lineNumber, const QString& reason) {
    std::fprintf(stderr, "driver: script line %d: %s\n", lineNumber, qPrintable(reason));
    std::fflush(stderr);
    std::_Exit(gaveUpStatus);
}
