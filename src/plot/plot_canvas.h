#pragma once

#include "plot_geometry.h"
#include "point_marks.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPen>
#include <QString>
#include <optional>
#include <span>
#include <vector>

// What both plots are drawn with.

// A white image of the plot's size and magnification; null where it has none.
QImage whiteImage(const PlotGeometry& geometry);

QFont plotFont(int pointSize);

// Width and shape of dots and segments, before magnification.
struct DotLook {
    int width;
    Qt::PenCapStyle shape = Qt::SquareCap;
};

// A painter, the one pen that all of a plot is drawn with, and the quick marks. Marks are
// collected, and are on the image before anything else is drawn over them and at the end.
//
// On a page, letters and lines are drawn as such, and all marks as one image between them.
class Canvas {
public:
    // For an image in RGB32 that is not shared, not null, and outlives this.
    Canvas(QImage& image, const PlotGeometry& geometry, const DotLook& dot);

    // For a page with the geometry's size in dots, which outlives this as do the marks: an image
    // as above, but in ARGB32 and transparent.
    Canvas(QImage& marks, QPaintDevice& page, const PlotGeometry& geometry, const DotLook& dot);
    Q_DISABLE_COPY_MOVE(Canvas)

    const PlotGeometry& geometry() const { return m_geometry; }

    // For what lies below the marks; not to be kept once they start.
    QPainter& painter() { return m_painter; }

    void setColor(const QColor& color) { m_pen.setColor(color); }
    void setFont(const QFont& font);
    void drawLine(int x1, int y1, int x2, int y2);
    void drawThinLine(int x1, int y1, int x2, int y2); // of half the width
    QSizeF sizeOf(const QString& text) const;          // in the font that is set, in pixels
    void drawText(const QRectF& area, int alignment, const QString& text);

    // What is drawn from here on lies above the marks, which come next.
    void startMarks() { m_hasMarks = true; }

    // Draws a dot at each x and y; at most DotStamp::mostAtOnce, any coordinates.
    void putDots(std::span<const int> x, std::span<const int> y, QRgb color) {
        noteColor(color);
        m_dots.put(x, y, color);
    }

    // Draws a segment of the dots' width from where the last one ended, if there was one since the
    // line was lifted.
    void lineTo(QPoint to, QRgb color) {
        noteColor(color);
        m_line.goTo(to, color);
    }
    void liftLine() { m_line.lift(); }

    // Whether a dot or a segment shows in an area, by its colour: nothing else there may have it.
    bool hasMarks(const QRectF& area);

    // Ends drawing; to be called last. Memory may run out here.
    void finish();

private:
    struct Letters {
        QRectF area;
        int alignment;
        QString text;
        QPen pen;
        QFont font;
    };
    void settle();
    void noteColor(QRgb color) {
        if (m_markColors.empty() || color != m_markColors.back())
            addColor(color);
    }
    void addColor(QRgb color);

    const PlotGeometry m_geometry;
    DotStamp m_dots;
    QImage& m_marks;
    QPainter m_markPainter;
    std::optional<QPainter> m_page;
    QPainter& m_painter; // of letters and lines
    QPen m_pen;
    SegmentPath m_line;
    bool m_hasMarks = false;
    std::vector<QRgb> m_markColors; // each once, that of the last mark at the end
    std::vector<Letters> m_letters; // above the marks of a page
};

// What `paint` draws on a canvas: as an image, which is null where the geometry has no size, ...
template <typename Paint>
QImage paintedImage(const PlotGeometry& geometry, const DotLook& dot, Paint paint) {
    QImage image = whiteImage(geometry);
    if (!image.isNull()) {
        Canvas canvas(image, geometry, dot);
        paint(canvas);
        canvas.finish();
    }
    return image;
}

// ... and on a page. False, with nothing drawn, where there is no memory for the marks.
template <typename Paint>
bool paintPage(QPaintDevice& page, const PlotGeometry& geometry, const DotLook& dot, Paint paint) {
    const auto imageOf = [&](int heights) {
        return QImage(geometry.width, heights * geometry.height, QImage::Format_ARGB32);
    };
    QImage marks = imageOf(1);
    // Qt's pages crash where their copies of the marks find no memory, so it is asked for first.
    if (marks.isNull() || imageOf(2).isNull())
        return false;
    marks.fill(qRgba(255, 255, 255, 0)); // viewers that smooth images mix this into the edges
    Canvas canvas(marks, page, geometry, dot);
    paint(canvas);
    canvas.finish();
    return true;
}

// Lines at the -log10 p of 7.3, 6, 5, 4 and 3, each with its number at the left edge.
void paintReferenceLines(Canvas& canvas);

// The text, centred at the top edge.
void paintTitle(Canvas& canvas, const QString& title);
