#include "finding.h"

#include <cstdio>
#include <cstdlib>

void mustHold(bool holds, const char* what, const QString& expected, const QString& got) {
    if (holds)
        return;
    std::fprintf(stderr, "FINDING: %s\nexpected %s\n     got %s\n", what, qPrintable(expected),
                 qPrintable(got));
    std::abort();
}
