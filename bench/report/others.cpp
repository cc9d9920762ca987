#include "report/comparison.h"
#include "report/scan_file.h"

#include <QFile>
#include <algorithm>

QList<Verdict> reportOthers(const Plan& whole) {
    Plan plan = whole;
    plan.rounds = std::min(plan.rounds, 3); // R takes more than a minute for each
    const qint64 lines = plan.upTo(10'000'000);
    const ScanFile file(plainLayout(), lines);
    const Program opening{"", window({file.path()}), {}, "open"};
    const Program preparing{"", command({QStringLiteral(PELMARK_TOOLS), "prepare", file.path(),
                                         "-o", inWorkFolder("prepared.txt"), "--quiet"})};
    const auto script = [&](const char* interpreter, const char* name, const char* output) {
        return command({interpreter, QStringLiteral(PELMARK_BENCH_OTHERS "/") + name, file.path(),
                        inWorkFolder(output)});
    };
    const QList<Verdict> verdicts =
        compare(plan, "other tools", lines,
                {{"plot a file",
                  opening,
                  {"R with data.table and qqman",
                   script("Rscript", "manhattan.R", "other.png"),
                   {"Rscript", "-e", "library(data.table); library(qqman)"}},
                  "open-vs-others"},
                 {"plot a file",
                  opening,
                  {"Python with pandas and matplotlib",
                   script("python3", "manhattan.py", "other.png"),
                   {"python3", "-c", "import pandas, matplotlib"}},
                  "open-vs-others"},
                 {"prepare a file",
                  preparing,
                  {"R with data.table",
                   script("Rscript", "prepare.R", "by_others.txt"),
                   {"Rscript", "-e", "library(data.table)"}},
                  "prepare-vs-others"},
                 {"prepare a file",
                  preparing,
                  {"Python with pandas",
                   script("python3", "prepare.py", "by_others.txt"),
                   {"python3", "-c", "import pandas"}},
                  "prepare-vs-others"}});
    for (const char* name : {"other.png", "prepared.txt", "by_others.txt"})
        QFile::remove(inWorkFolder(name));
    return verdicts;
}
