#include "support/random.h"

#include <QString>
#include <QtGlobal>

std::uint64_t runSeed() {
    constexpr std::uint64_t usual = 20240607;
    bool isGiven = false;
    const std::uint64_t given = qEnvironmentVariable("PELMARK_SEED").toULongLong(&isGiven);
    const std::uint64_t seed = isGiven ? given : usual;
    qInfo("seed %llu (PELMARK_SEED)", static_cast<unsigned long long>(seed));
    return seed;
}

int randomCases(int usual) {
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("PELMARK_RANDOM_CASES", &isGiven);
    return isGiven ? given : usual;
}
