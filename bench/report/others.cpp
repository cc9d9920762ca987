#include "report/programs.h"
#include "report/scan_file.h"
#include "report/sections.h"
#include "report/table.h"

#include <algorithm>
#include <cstdio>

namespace {

struct Other {
    const char* name;
    QStringList check; // a command that fails where something is missing
    QStringList run;   // the file and the picture follow
};

QList<Other> others() {
    const QString folder = QStringLiteral(PELMARK_BENCH_OTHERS);
    return {{"Rscript with data.table and qqman",
             {"Rscript", "-e", "library(data.table); library(qqman)"},
             {"Rscript", folder + "/manhattan.R"}},
            {"python3 with pandas and matplotlib",
             {"python3", "-c", "import pandas, matplotlib"},
             {"python3", folder + "/manhattan.py"}}};
}

void reportOther(const Other& other, const ScanFile& file, int rounds) {
    Samples window, samples;
    for (int round = 0; round < rounds; ++round) {
        window.add(runWindow({file.path()})["open"]);
        samples.add(secondsOf(other.run + QStringList{file.path(), inWorkFolder("other.png")}));
    }
    Table::addRow({other.name, told(window), told(samples),
                   samples.minimum() < 0.0 ? "failed" : times(samples.median() / window.median())});
}

} // namespace

void reportOthers(const Extent& extent) {
    constexpr int enough = 3; // rounds: some take a minute each
    constexpr qint64 largest = 10'000'000;
    const ScanFile file(plainLayout(), std::min(extent.sizes.constLast(), largest));
    const Table table({"other tools", "Pelmark", "the tool", "ratio"});
    for (const Other& other : others()) {
        if (secondsOf(other.check) < 0.0)
            Table::addRow({other.name, "", "skipped: not on this machine", ""});
        else
            reportOther(other, file, std::min(extent.rounds, enough));
    }
}
