// Both plots against the reference, pixel by pixel. Input: screen, options, chromosomes, points.

#include "finding.h"
#include "plain_painter.h"
#include "plot_geometry.h"
#include "plot_painter.h"
#include "points_input.h"

#include <QGuiApplication>

namespace {

// Fonts need an application object, but no screen.
void startQt() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    static QGuiApplication application(argc, argv);
}

GenomePlot genomeFrom(Input& input) {
    GenomePlot plot;
    plot.title = QStringLiteral("file.txt");
    plot.referenceLines = input.flag();
    const int count = 1 + input.below(5);
    for (int i = 0; i < count; ++i) {
        Chromosome chromosome{.label = QString(QChar(u'1' + input.below(3)))};
        chromosome.startValue = positionFrom(input);
        plot.chromosomes.append(chromosome);
    }
    return plot;
}

ChromosomePlot chromosomeFrom(Input& input) {
    ChromosomePlot plot;
    plot.referenceLines = input.flag();
    plot.joined = input.flag();
    plot.highlight = {positionFrom(input), positionFrom(input)};
    return plot;
}

void mustBeSame(const char* what, const QImage& image, const QImage& expected) {
    const QString difference = plain::pixelDifference(image, expected);
    mustHold(difference.isEmpty(), what, {}, difference);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    startQt();
    Input input(bytes, size);
    const QSize screen(input.number<std::uint8_t>(), input.number<std::uint8_t>());
    const ChromosomePlot chromosome = chromosomeFrom(input);
    const GenomePlot genome = genomeFrom(input);
    const Points data = pointsFrom(input, 300);
    const PlotGeometry geometry = plotGeometry(data, screen);
    const PlotPoints points{data.positions, data.values};
    mustBeSame("chromosome plot", paintChromosome(geometry, points, chromosome),
               plain::paintChromosome(geometry, points, chromosome));
    mustBeSame("genome plot", paintGenome(geometry, points, genome),
               plain::paintGenome(geometry, points, genome));
    return 0;
}
