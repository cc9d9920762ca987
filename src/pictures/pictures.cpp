#include "pictures.h"

#include "inflation.h"
#include "plot_painter.h"
#include "plot_texts.h"
#include "quantiles.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

constexpr int pdfMagnification = 4; // 384 dots per inch

int magnification(const PlotRequest& request, PictureFormat format) {
    if (request.magnification > 0)
        return request.magnification;
    const int most = mostPixels / std::max(request.size.width(), request.size.height());
    return format == PictureFormat::Pdf ? std::min(pdfMagnification, most) : 1;
}

PlotPoints spansOf(const Points& points) {
    return {points.positions, points.values};
}

// Both kinds of picture from the function pair that paints them.
template <typename Plot, typename PaintImage, typename PaintPage>
void setPainters(Picture& picture, Plot plot, PaintImage paintImage, PaintPage paintPage) {
    const auto shared = std::make_shared<const Plot>(std::move(plot));
    picture.image = [shared, paintImage] { return paintImage(*shared); };
    picture.drawOn = [shared, paintPage](QPaintDevice& page) { return paintPage(page, *shared); };
}

struct Manhattan {
    PlotGeometry geometry;
    Points points;
    GenomePlot genome;
    ChromosomePlot chromosome;
    bool isGenome;
};

void setManhattan(Picture& picture, PlotData data, const PlotRequest& request) {
    const PlotGeometry geometry = geometryOfSize(data.points, picture.size, picture.magnification);
    Manhattan manhattan{
        geometry,
        std::move(data.points),
        {picture.title, std::move(data.chromosomes), request.referenceLines, data.labels},
        {request.mark.value_or(PositionRange{}), request.joined, request.referenceLines,
         data.labels},
        data.isGenome};
    setPainters(
        picture, std::move(manhattan),
        [](const Manhattan& plot) {
            const PlotPoints points = spansOf(plot.points);
            return plot.isGenome ? paintGenome(plot.geometry, points, plot.genome)
                                 : paintChromosome(plot.geometry, points, plot.chromosome);
        },
        [](QPaintDevice& page, const Manhattan& plot) {
            const PlotPoints points = spansOf(plot.points);
            return plot.isGenome ? printGenome(page, plot.geometry, points, plot.genome)
                                 : printChromosome(page, plot.geometry, points, plot.chromosome);
        });
}

struct Quantiles {
    PlotGeometry geometry;
    QString title;
    std::vector<double> observed;
    std::vector<QuantileBand> band;

    QuantilePlot plot() const { return {title, observed, band}; }
};

void setQuantiles(Picture& picture, std::vector<double> observed) {
    picture.lambda = genomicInflation(observed);
    Quantiles quantiles{geometryOfSize({}, picture.size, picture.magnification),
                        QStringLiteral("%1, %2 = %3, %4 markers")
                            .arg(picture.title, QChar(0x3bb),
                                 QString::number(picture.lambda.value_or(0.0), 'f', 3),
                                 groupedInThrees(static_cast<int>(observed.size()))),
                        std::move(observed),
                        {}};
    quantiles.band = quantileBand(quantiles.observed.size());
    setPainters(
        picture, std::move(quantiles),
        [](const Quantiles& plot) { return paintQuantiles(plot.geometry, plot.plot()); },
        [](QPaintDevice& page, const Quantiles& plot) {
            return printQuantiles(page, plot.geometry, plot.plot());
        });
}

} // namespace

std::variant<Picture, Failure> pictureOf(PlotData data, const QString& name,
                                         const PlotRequest& request, PictureFormat format) {
    Picture picture{titleName(name), request.size, magnification(request, format), {}, {}, {}};
    if (!request.quantiles) {
        setManhattan(picture, std::move(data), request);
        return picture;
    }
    std::vector<double> observed = rankedValues(data.points.values);
    if (observed.size() < 2)
        return Failure{StatusNotUnderstood,
                       name + QLatin1String(": has fewer than two p-values from above 0 to 1.")};
    setQuantiles(picture, std::move(observed));
    return picture;
}
