#include "report/programs.h"
#include "report/scan_file.h"
#include "report/sections.h"
#include "report/table.h"

#include <algorithm>

namespace {

struct Redraw {
    const char* step;
    const char* what;
    const char* plainPlot; // the plot that the plain way is timed with
    Samples samples = {};
};

// In an order in which each step has nearly all points before or after it.
QList<Redraw> redraws() {
    return {{"zoom-wide", "zoom to nearly all points", "dots"},
            {"unzoom", "unzoom", "dots"},
            {"join", "check box 1: join", "joined"},
            {"part", "check box 1: part", "dots"},
            {"lines-off", "check box 2: no lines", "dots"},
            {"lines-on", "check box 2: lines", "dots"},
            {"zoom-narrow", "zoom to a few points", "dots"},
            {"remove", "remove the few", "dots"}};
}

QStringList windowArguments(const QString& path, const QList<Redraw>& all) {
    QStringList arguments{path};
    for (const Redraw& redraw : all)
        arguments << QString::fromLatin1(redraw.step);
    return arguments;
}

void addRedraw(const Redraw& redraw, const Samples& plain) {
    const double bar = std::max(0.016, plain.median() / 20.0);
    Table::addRow({QString::fromLatin1(redraw.what), told(redraw.samples), told(plain),
                   times(plain.median() / redraw.samples.median()), "at most " + toldSeconds(bar),
                   verdict(redraw.samples.median() <= bar)});
}

void addSaving(const Samples& save, const Samples& stream) {
    constexpr double timesFaster = 3.0;
    const double quotient = stream.median() / save.median();
    Table::addRow({"save a table of them", told(save), "text stream " + told(stream),
                   times(quotient), "at least 3 x", verdict(quotient >= timesFaster)});
}

} // namespace

void reportRedraws(const Extent& extent) {
    const qint64 points = std::min<qint64>(extent.sizes.constLast(), 1'000'000);
    ScanLayout layout = plainLayout();
    layout.name = "one_chromosome";
    layout.chromosomes = 1;
    const ScanFile file(layout, points);
    QList<Redraw> all = redraws();
    QMap<QString, Samples> plain;
    Samples save, stream;
    for (int round = 0; round < extent.rounds; ++round) {
        const Told window = runWindow(windowArguments(file.path(), all));
        for (Redraw& redraw : all)
            redraw.samples.add(window[redraw.step]);
        const Told parts = runParts({"plain-redraw", file.path(), "1"});
        for (const char* plot : {"dots", "joined"})
            plain[plot].add(parts[plot]);
        const Told saved = runParts({"save", file.path(), "1", inWorkFolder(QString())});
        save.add(saved["save"]);
        stream.add(saved["stream"]);
    }
    const Table table({QStringLiteral("a chromosome of %1 points").arg(points), "Pelmark",
                       "one painter call per point", "ratio", "bar", ""});
    for (const Redraw& redraw : all)
        addRedraw(redraw, plain[redraw.plainPlot]);
    addSaving(save, stream);
}
