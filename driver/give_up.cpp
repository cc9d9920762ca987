#include "give_up.h"

#include <cstdio>
#include <cstdlib>

namespace {

QString currentStep = QStringLiteral("at the start");

} // namespace

void setStep(const QString& step) {
    currentStep = step;
}

void giveUp(const QString& reason) {
    std::fprintf(stderr, "driver: %s: %s\n", qPrintable(currentStep), qPrintable(reason));
    std::fflush(stderr);
    std::_Exit(gaveUpStatus);
}
