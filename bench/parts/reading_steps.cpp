#include "parts/reading_steps.h"

#include "association_file.h"
#include "line_fields.h"
#include "number_fields.h"
#include "parts/clock.h"
#include "parts/pictures.h"
#include "text_blocks.h"

#include <QFile>
#include <cmath>
#include <functional>
#include <numeric>
#include <vector>

namespace {

// Stores the result, so that the compiler cannot optimize the task away.
void timeTask(const char* name, const std::function<double()>& task) {
    [[maybe_unused]] volatile const double result = timed(name, task);
}

double readAlone(QFile& file) {
    QByteArray block(TextBlocks::defaultBlockSize, '\0');
    double bytes = 0.0;
    file.open(QIODevice::ReadOnly);
    for (qint64 got = 0; (got = file.read(block.data(), block.size())) > 0;)
        bytes += static_cast<double>(got);
    return bytes;
}

template <typename Task>
double forEachPiece(QFile& file, Task task) {
    double sum = 0.0;
    file.open(QIODevice::ReadOnly);
    TextBlocks blocks(file, TextBlocks::defaultBlockSize);
    while (blocks.next())
        sum += task(blocks.piece());
    return sum;
}

template <typename Task>
double forEachRecord(QFile& device, Task task) {
    double sum = 0.0;
    AssociationFile file(device, {});
    Record record;
    for (bool isOpen = file.open(); isOpen && file.next(record);)
        sum += task(file, record);
    return sum;
}

double sizeOf(std::string_view text) {
    return static_cast<double>(text.size());
}

double numbersIn(AssociationFile& file, const Record& record) {
    Marker marker;
    return file.readMarker(record, marker) ? marker.pValue + marker.position : 0.0;
}

void timeLogarithms(const QString& fileName) {
    QFile device(fileName);
    std::vector<double> pValues;
    forEachRecord(device, [&](AssociationFile&, const Record& record) {
        pValues.push_back(toReal(record.pValue).value_or(1.0));
        return 0.0;
    });
    timeTask("logarithm", [&] {
        return std::accumulate(pValues.begin(), pValues.end(), 0.0,
                               [](double sum, double p) { return sum - std::log10(p); });
    });
}

} // namespace

void timeReadingSteps(const QString& fileName) {
    const auto withFile = [&](auto task) {
        return [&fileName, task] {
            QFile file(fileName);
            return task(file);
        };
    };
    LineFields fields;
    timeTask("read", withFile(readAlone));
    timeTask("blocks", withFile([](QFile& file) { return forEachPiece(file, sizeOf); }));
    timeTask("fields", withFile([&](QFile& file) {
                 return forEachPiece(file, [&](std::string_view piece) {
                     fields.find(piece, '\t');
                     return sizeOf(piece);
                 });
             }));
    timeTask("lines", withFile([](QFile& file) {
                 return forEachRecord(
                     file, [](AssociationFile&, const Record& r) { return sizeOf(r.pValue); });
             }));
    timeTask("numbers", withFile([](QFile& file) { return forEachRecord(file, numbersIn); }));
    timeLogarithms(fileName);
    QFile file(fileName);
    const auto scan = std::get<GenomeScan>(timed("scan", [&] { return scanGenome(file); }));
    timed("geometry", [&] { return geometryOf(scan.points); });
    timed("genome", [&] { return genomeImage(paintGenome, scan); });
}
