#pragma once

#include "plot_painter.h"
#include "points.h"
#include "state.h"

#include <QImage>
#include <QList>
#include <QSize>
#include <QString>

// What the window must show for a set of points, by the reference. Its plots are painted on the
// same platform as the window's, so they match whatever fonts are installed.
struct ExpectedView : Points {
    // Without a display, the screen has 800 x 800 pixels.
    static constexpr QSize usualScreen{800, 800};
    static constexpr QSize plotSize{640, 600};

    ExpectedView(QList<int> positions, QList<double> values, QSize screen = usualScreen);

    int x(int position) const;
    int y(double value) const;

    // Empty if the program computed the same geometry and holds the same points.
    QStringList differencesTo(const State& state) const;

    PlotGeometry geometry;
};

// With reference lines, as the window starts.
GenomePlot genomePlot(const QString& title, const QStringList& labels,
                      const QList<int>& startValues);

QImage expectedChromosomePlot(const ExpectedView& view,
                              const ChromosomePlot& plot = {{}, false, true});
QImage expectedGenomePlot(const ExpectedView& view, const GenomePlot& plot);
QString picture(const QImage& image); // as State::picture() writes it
int pixelsOf(const QImage& image, const QColor& color);
