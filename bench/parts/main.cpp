// Times parts of the program, and the plain reference doing the same, in one process:
//     pelmark_parts plain-open FILE          the reference's reader and painter
//     pelmark_parts plain-redraw FILE LABEL  the reference's painter, dots and joined
//     pelmark_parts save FILE LABEL FOLDER   the program's table writer and a QTextStream
//     pelmark_parts steps FILE               the steps of opening a file
//     pelmark_parts same FILE LABEL FOLDER   times nothing; exits with status 1 where program and
//                                            reference differ
// Each time is a line on standard output: "NAME SECONDS".

#include "parts/clock.h"
#include "parts/pictures.h"
#include "parts/reading_steps.h"
#include "parts/readings.h"
#include "parts/stream_table.h"
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

// Writes both tables. True where both were written and have the same bytes.
bool saveBoth(const Points& points, const QString& label, const QString& folder) {
    const QString quick = folder + "/quick.txt", stream = folder + "/stream.txt";
    const bool isSaved = timed("save", [&] { return savePointTable(quick, points, label); }) &&
                         timed("stream", [&] { return saveByTextStream(stream, points, label); });
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

// Where both report the same fault there are no points left to compare.
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
