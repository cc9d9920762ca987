#include "report/comparison.h"
#include "report/scan_file.h"

#include <algorithm>

QList<Verdict> reportOthers(const Plan& whole) {
    Plan plan = whole;
    plan.rounds = std::min(plan.rounds, 3); // R takes more than a minute for each
    const qint64 lines = plan.upTo(10'000'000);
    const ScanFile file(plainLayout(), lines);
    const Program opening{"", window({file.path()}), {}, "open"};
    const auto script = [&](const char* interpreter, const char* name) {
        return command({interpreter, QStringLiteral(PELMARK_BENCH_OTHERS "/") + name, file.path(),
                        inWorkFolder("other.png")});
    };
    return compare(plan, "other tools", lines,
                   {{"plot a file",
                     opening,
                     {"R with data.table and qqman",
                      script("Rscript", "manhattan.R"),
                      {"Rscript", "-e", "library(data.table); library(qqman)"}},
                     "open-vs-others"},
                    {"plot a file",
                     opening,
                     {"Python with pandas and matplotlib",
                      script("python3", "manhattan.py"),
                      {"python3", "-c", "import pandas, matplotlib"}},
                     "open-vs-others"}});
}
