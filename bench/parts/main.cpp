// Times parts of the program, and the plain reference doing the same, in one process:
//     pelmark_parts plain-open FILE          the reference's reader and painter
//     pelmark_parts plain-redraw FILE LABEL  the reference's painter, dots and joined
//     pelmark_parts save FILE LABEL FOLDER   the program's table writer and a QTextStream
//     pelmark_parts scan FILE                the program's reading of a whole file
//     pelmark_parts steps FILE               the steps of opening a file
//     pelmark_parts same FILE LABEL FOLDER   times nothing; exits with status 1 where program and
//                                            reference differ
// Each time is a line on standard output: "NAME SECONDS".

#include "chromosome_load.h"
#include "parts/clock.h"
#include "parts/pictures.h"
#include "parts/reading_steps.h"
#include "plain_painter.h"
#include "plain_reader.h"
#include "plain_table.h"
#include "point_table.h"
#include "support/reading.h"

#include <QFile>
#include <QGuiApplication>
#include <QStringList>

namespace {

int plainOpen(const QStringList& arguments) {
    QFile file(arguments[0]);
    const QImage image = timed("plain", [&] {
        return genomeImage(plain::paintGenome, std::get<GenomeScan>(plain::scanGenome(file)));
    });
    return image.isNull() ? 1 : 0;
}

Points loaded(const QStringList& arguments) {
    QFile file(arguments[0]);
    return std::get<Points>(loadChromosome(file, arguments[1]));
}

int plainRedraw(const QStringList& arguments) {
    const Points points = loaded(arguments);
    const auto paint = [&](Join join) {
        return chromosomeImage(plain::paintChromosome, points, join);
    };
    const QImage dots = timed("dots", [&] { return paint(Join::No); });
    const QImage joined = timed("joined", [&] { return paint(Join::Yes); });
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

// Writes both tables. True where both were written and have the same bytes.
bool saveBoth(const Points& points, const QString& label, const QString& folder) {
    const QString quick = folder + "/quick.txt", stream = folder + "/stream.txt";
    const bool isSaved = timed("save", [&] { return savePointTable(quick, points, label); }) &&
                         timed("stream", [&] { return savePlainTable(stream, points, label); });
    return isSaved && contentOf(quick) == contentOf(stream);
}

int save(const QStringList& arguments) {
    return saveBoth(loaded(arguments), arguments[1], arguments[2]) ? 0 : 1;
}

int scan(const QStringList& arguments) {
    QFile file(arguments[0]);
    return std::holds_alternative<GenomeScan>(timed("scan", [&] { return scanGenome(file); })) ? 0
                                                                                               : 1;
}

int steps(const QStringList& arguments) {
    timeReadingSteps(arguments[0]);
    return 0;
}

bool isPaintedAlike(const GenomeScan& scan) {
    return genomeImage(paintGenome, scan) == genomeImage(plain::paintGenome, scan);
}

bool isPaintedAlike(const Points& points, Join join) {
    return chromosomeImage(paintChromosome, points, join) ==
           chromosomeImage(plain::paintChromosome, points, join);
}

// Where both report the same fault there are no points left to compare.
bool isSame(const QByteArray& file, const QString& label, const QString& folder) {
    const Result<GenomeScan> genome = scan(file);
    const Result<Points> chromosome = load(file, label);
    if (!isSame(genome, plainScan(file)) || !isSame(chromosome, plainLoad(file, label)))
        return false;
    if (const auto* points = std::get_if<GenomeScan>(&genome); points && !isPaintedAlike(*points))
        return false;
    const auto* points = std::get_if<Points>(&chromosome);
    return points == nullptr ||
           (isPaintedAlike(*points, Join::No) && isPaintedAlike(*points, Join::Yes) &&
            saveBoth(*points, label, folder));
}

int same(const QStringList& arguments) {
    return isSame(contentOf(arguments[0]), arguments[1], arguments[2]) ? 0 : 1;
}

struct Task {
    const char* name;
    qsizetype arguments;
    int (*run)(const QStringList&);
};

constexpr Task tasks[] = {{"plain-open", 1, plainOpen},
                          {"plain-redraw", 2, plainRedraw},
                          {"save", 3, save},
                          {"scan", 1, scan},
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
