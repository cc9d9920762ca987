// Measures the program and prints what it found as tables in Markdown:
//     pelmark_bench [--rounds N] [--folder FOLDER] [--smoke] [LINES...]
// The files that it measures with are made in the folder, and are gone at the end. The status is 1
// where a result is wrong, and 3 where a bar is not met, which --smoke does not mind.

#include "report/sections.h"

#include "report/programs.h"
#include "report/table.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>
#include <QThread>
#include <algorithm>
#include <cstdio>

namespace {

constexpr qint64 fewestLines = 1000;

QByteArray valueIn(const QString& fileName, const QByteArray& key) {
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly))
        for (const QByteArray& line : file.readAll().split('\n'))
            if (line.startsWith(key))
                return line.mid(line.indexOf(':') + 1).trimmed();
    return "unknown";
}

void reportMachine() {
    std::printf("%s, %d cores, %s, Qt %s, load before the start %s\n"
                "Cells hold the median, in brackets the minimum and the spread: the largest less "
                "the smallest, as a share of the median.\n",
                valueIn("/proc/cpuinfo", "model name").constData(), QThread::idealThreadCount(),
                qUtf8Printable(QSysInfo::prettyProductName()), qVersion(),
                valueIn("/proc/loadavg", "").left(4).constData());
}

QList<qint64> sizesIn(const QStringList& arguments) {
    QList<qint64> sizes;
    for (const QString& argument : arguments)
        sizes.append(std::max(argument.toLongLong(), fewestLines));
    if (sizes.isEmpty())
        sizes = {1'000'000, 2'000'000, 5'000'000, 10'000'000, 20'000'000};
    std::sort(sizes.begin(), sizes.end());
    return sizes;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption({"rounds", "How often each is measured.", "number", "5"});
    parser.addOption({"folder", "Where files are made.", "folder", "."});
    parser.addOption({"smoke", "Only wrong results count, no bars."});
    parser.addPositionalArgument("LINES", "Sizes of the files to open.", "[LINES...]");
    parser.addHelpOption();
    parser.process(application);
    setWorkFolder(parser.value("folder"));
    const Extent extent{sizesIn(parser.positionalArguments()),
                        std::max(parser.value("rounds").toInt(), 1)};
    reportMachine();
    if (!reportSameness(extent))
        return 1;
    reportOpenings(extent);
    reportRedraws(extent);
    reportOddFiles(extent);
    reportSteps(extent);
    reportOthers(extent);
    std::printf("\nBars not met: %d\n", barsMissed());
    return barsMissed() > 0 && !parser.isSet("smoke") ? 3 : 0;
}
