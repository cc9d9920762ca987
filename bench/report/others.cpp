#include "report/comparison.h"
#include "report/scan_file.h"
#include "report/tools_runs.h"

#include <QFile>
#include <algorithm>

namespace {

// A job that Pelmark does, and scripts that do it with the usual packages of R and Python.
struct Job {
    QString what;
    Program ours;
    QString script; // its name without the ending
    QStringList words;
    QString packagesOfR, packagesOfPython;
    QString bar;
};

QList<Comparison> comparisonsOf(const Job& job) {
    const auto script = [&](const char* interpreter, const char* ending) {
        return command(QStringList{interpreter, QStringLiteral(PELMARK_BENCH_OTHERS "/") +
                                                    job.script + QLatin1String(ending)} +
                       job.words);
    };
    QString libraries = job.packagesOfR, modules = job.packagesOfPython;
    libraries.replace(QLatin1String(" and "), QLatin1String("); library("));
    modules.replace(QLatin1String(" and "), QLatin1String(", "));
    return {{job.what,
             job.ours,
             {QLatin1String("R with ") + job.packagesOfR,
              script("Rscript", ".R"),
              {"Rscript", "-e", QLatin1String("library(") + libraries + u')'}},
             job.bar},
            {job.what,
             job.ours,
             {QLatin1String("Python with ") + job.packagesOfPython,
              script("python3", ".py"),
              {"python3", "-c", QLatin1String("import ") + modules}},
             job.bar}};
}

} // namespace

QList<Verdict> reportOthers(const Plan& whole) {
    Plan plan = whole;
    plan.rounds = std::min(plan.rounds, 3); // R takes more than a minute for each
    const qint64 lines = plan.upTo(10'000'000);
    const ScanFile file(plainLayout(), lines);
    const QString ours = inWorkFolder("ours.out"), picture = inWorkFolder("ours.png"),
                  theirs = inWorkFolder("theirs.png");
    const QStringList tables = savedTables(file.path()), words{file.path(), theirs};
    const auto run = [](const QStringList& arguments) {
        return Program{"", tools(arguments + QStringList{"-q"})};
    };
    const Program opening{"", window({file.path()}), {}, "open"},
        plot = run({"plot", file.path(), "-o", picture});
    const QString plotR = "data.table and qqman", plotPython = "pandas and matplotlib";
    QList<Comparison> comparisons;
    for (const Job& job :
         QList<Job>{{"plot a file, in the window", opening, "manhattan", words, plotR, plotPython,
                     "open-vs-others"},
                    {"plot a file", plot, "manhattan", words, plotR, plotPython, "plot-vs-others"},
                    {"prepare a file", run({"prepare", file.path(), "-o", ours}), "prepare", words,
                     "data.table", "pandas", "prepare-vs-others"},
                    {"find hits", run({"hits", file.path(), "-o", ours}), "hits", words,
                     "data.table", "pandas", "hits-vs-others"},
                    {"drop rows", run(QStringList{"drop", file.path(), "-o", ours} + tables),
                     "drop", words + tables, "data.table", "pandas", "drop-vs-others"}})
        comparisons += comparisonsOf(job);
    const QList<Verdict> verdicts = compare(plan, "other tools", lines, comparisons);
    for (const QString& name : tables + QStringList{ours, picture, theirs})
        QFile::remove(name);
    return verdicts;
}
