// Measures the program and prints tables in Markdown:
//     pelmark_bench [--rounds N] [--folder FOLDER] [--only SECTION]... [--smoke] [LINES...]
// Generates its files in FOLDER and removes them. Exit status: 0, 1 where the program's results
// differ from the plain reference's, 2 where something failed, 3 where a bar is not met.

#include "report/programs.h"
#include "report/sections.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <iterator>

namespace {

struct Section {
    const char* name;
    QList<Verdict> (*report)(const Plan&);
};

constexpr Section sections[] = {{"sameness", reportSameness}, {"openings", reportOpenings},
                                {"redraws", reportRedraws},   {"odd-files", reportOddFiles},
                                {"steps", reportSteps},       {"others", reportOthers}};

QByteArray valueIn(const QString& fileName, const QByteArray& key) {
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly))
        for (const QByteArray& line : file.readAll().split('\n'))
            if (line.startsWith(key))
                return line.mid(line.indexOf(':') + 1).trimmed();
    return "unknown";
}

void reportMachine() {
    std::printf("%s, %d cores, %s, Qt %s, load average before the start %s\n"
                "Times are medians, followed in brackets by the minimum and the spread: maximum "
                "less minimum, as a share of the median.\n",
                valueIn("/proc/cpuinfo", "model name").constData(), QThread::idealThreadCount(),
                qUtf8Printable(QSysInfo::prettyProductName()), qVersion(),
                valueIn("/proc/loadavg", "").left(4).constData());
}

QList<qint64> sizesIn(const QStringList& arguments) {
    constexpr qint64 fewestLines = 1000;
    QList<qint64> sizes;
    for (const QString& argument : arguments)
        sizes << std::max(argument.toLongLong(), fewestLines);
    if (sizes.isEmpty())
        sizes = {1'000'000, 2'000'000, 5'000'000, 10'000'000, 20'000'000};
    std::sort(sizes.begin(), sizes.end());
    return sizes;
}

QList<Verdict> missed(const QList<Verdict>& verdicts) {
    QList<Verdict> missed;
    std::copy_if(verdicts.begin(), verdicts.end(), std::back_inserter(missed),
                 [](const Verdict& v) { return v.outcome == Verdict::Outcome::Missed; });
    return missed;
}

// With no names, all sections.
QList<Verdict> report(const QStringList& names, const Plan& plan) {
    QList<Verdict> verdicts;
    QStringList unknown = names;
    for (const Section& section : sections)
        if (unknown.removeAll(section.name) > 0 || names.isEmpty())
            verdicts << section.report(plan);
    if (!unknown.isEmpty())
        fail("no such section: " + unknown.join(' '));
    return verdicts;
}

// The exit status.
int summarize(const QList<Verdict>& misses, bool isSmoke) {
    std::printf("\nBars not met: %d\n", static_cast<int>(misses.size()));
    for (const Verdict& miss : misses)
        std::printf("* %s: %s, %s\n", qUtf8Printable(miss.what), qUtf8Printable(miss.measured),
                    qUtf8Printable(miss.bar));
    return misses.isEmpty() || isSmoke ? 0 : 3;
}

} // namespace

int main(int argc, char** argv) try {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption({"rounds", "How often each program runs.", "number", "5"});
    parser.addOption({"folder", "Where to generate files.", "folder", "."});
    parser.addOption({"bars", "The bars to hold the results against.", "file", PELMARK_BARS});
    parser.addOption({"only", "Measure this section alone; may be repeated.", "section"});
    parser.addOption({"smoke", "Exit with status 0 even where bars are not met."});
    parser.addPositionalArgument("LINES", "Sizes of the files to open.", "[LINES...]");
    parser.addHelpOption();
    parser.process(application);
    const Plan plan{Bars(parser.value("bars")), sizesIn(parser.positionalArguments()),
                    std::max(parser.value("rounds").toInt(), 1)};
    enterWorkFolder(parser.value("folder"));
    reportMachine();
    return summarize(missed(report(parser.values("only"), plan)), parser.isSet("smoke"));
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
}
