// Times parts of what the program does, and the plain ways to do the same, in one process:
//     pelmark_parts plain-open FILE          plain reading, one painter call for each point
//     pelmark_parts plain-redraw FILE LABEL  one painter call for each point or segment
//     pelmark_parts save FILE LABEL FOLDER   the program's table and the text stream's
//     pelmark_parts steps FILE               how the time to open divides
//     pelmark_parts same FILE LABEL FOLDER   nothing timed: fails where the two ways differ
// Each time is told as a line on standard output: its name and seconds.

#include "parts/clock.h"
#include "parts/pictures.h"
#include "parts/reading_steps.h"
#include "parts/readings.h"
#include "plain_table.h"
#include "point_table.h"
#include "support/reading.h"

#include <QFile>
#include <QGuiApplication>
#include <QStringList>

namespace {

int plainOpen(const QStringList& arguments) {
    const QImage image =
        timed("plain", [&] { return plainGenome(valueOf(plainScan(arguments[0]))); });
    return image.isNull() ? 1 : 0;
}

int plainRedraw(const QStringList& arguments) {
    const Points points = valueOf(quickLoad(arguments[0], arguments[1]));
    const QImage dots = timed("dots", [&] { return plainChromosome(points, Join::No); });
    const QImage joined = timed("joined", [&] { return plainChromosome(points, Join::Yes); });
    return dots.isNull() || joined.isNull() ? 1 : 0;
}

QByteArray contentOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool savePlainTable(const QString& fileName, const Points& points, const QString& label) {
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly | QIODevice::Text) &&
           plain::writeTable(file, points, label) && file.flush();
}

// Writes both tables; true when they are there and have the same bytes.
bool saveBoth(const Points& points, const QString& label, const QString& folder) {
    const QString quick = folder + "/quick.txt", stream = folder + "/stream.txt";
    const bool isSaved = timed("save", [&] { return savePointTable(quick, points, label); }) &&
                         timed("stream", [&] { return savePlainTable(stream, points, label); });
    return isSaved && contentOf(quick) == contentOf(stream);
}

int save(const QStringList& arguments) {
    const Points points = valueOf(quickLoad(arguments[0], arguments[1]));
    return saveBoth(points, arguments[1], arguments[2]) ? 0 : 1;
}

int steps(const QStringList& arguments) {
    timeReadingSteps(arguments[0]);
    return 0;
}

bool isPaintedAlike(const GenomeScan& scan) {
    return quickGenome(scan) == plainGenome(scan);
}

bool isPaintedAlike(const Points& chromosome) {
    return quickChromosome(chromosome, Join::No) == plainChromosome(chromosome, Join::No) &&
           quickChromosome(chromosome, Join::Yes) == plainChromosome(chromosome, Join::Yes);
}

// A file at fault has no points to go on with.
int same(const QStringList& arguments) {
    const QString &file = arguments[0], &label = arguments[1], &folder = arguments[2];
    const auto scan = quickScan(file);
    const auto load = quickLoad(file, label);
    if (!isSame(scan, plainScan(file)) || !isSame(load, plainLoad(file, label)))
        return 1;
    if (const auto* points = std::get_if<GenomeScan>(&scan); points && !isPaintedAlike(*points))
        return 1;
    const auto* chromosome = std::get_if<Points>(&load);
    return chromosome == nullptr ||
                   (isPaintedAlike(*chromosome) && saveBoth(*chromosome, label, folder))
               ? 0
               : 1;
}

struct Task {
    const char* name;
    qsizetype arguments;
    int (*run)(const QStringList&);
};

constexpr Task tasks[] = {{"plain-open", 1, plainOpen},
                          {"plain-redraw", 2, plainRedraw},
                          {"save", 3, save},
                          {"steps", 1, steps},
                          {"same", 3, same}};

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(2);
    loadFonts();
    for (const Task& task : tasks)
        if (argc > 1 && qstrcmp(argv[1], task.name) == 0 && arguments.size() == task.arguments)
            return task.run(arguments);
    std::fputs("usage: see the head of bench/parts/main.cpp\n", stderr);
    return 2;
}
