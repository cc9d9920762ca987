// Measures the program and prints tables in Markdown:
//     pelmark_bench [--rounds N] [--folder FOLDER] [--only SECTION]... [--smoke] [LINES...]
// Generates its files in FOLDER and removes them. Exit status: 0, 1 where the program's results
// differ from the plain reference's, 2 where something failed, 3 where a bar is not met.

#include "report/programs.h"
#include "report/sections.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSysInfo>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <exception>

namespace {

struct Section {
    const char* name;
    QList<Verdict> (*report)(const Plan&);
};

constexpr Section sections[] = {{"sameness", reportSameness}, {"openings", reportOpenings},
                                {"redraws", reportRedraws},   {"odd-files", reportOddFiles},
                                {"steps", reportSteps},       {"others", reportOthers},
                                {"tools", reportTools}};

QByteArray valueIn(const QString& fileName, const QByteArray& key) {
    for (const QByteArray& line : contentOf(fileName).split('\n'))
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

// True where all bars are met.
bool summarize(QList<Verdict> verdicts) {
    verdicts.removeIf([](const Verdict& verdict) { return verdict.met != false; });
    std::printf("\nBars not met: %d\n", static_cast<int>(verdicts.size()));
    for (const auto& [what, measured, bar, met] : verdicts)
        std::printf("* %s: %s, %s\n", qUtf8Printable(what), qUtf8Printable(measured),
                    qUtf8Printable(bar));
    return verdicts.isEmpty();
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
    return summarize(report(parser.values("only"), plan)) || parser.isSet("smoke") ? 0 : 3;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
}
