#pragma once

#include <QImage>
#include <QPen>
#include <QPoint>
#include <QRgb>
#include <cstddef>
#include <optional>
#include <vector>

class QPainter;

// The quick way to put very many equal dots on an image. The painter draws one dot, and where its
// pixels are is then true of every dot of that pen: so the image is, pixel by pixel, the one that
// the painter's drawPoint() would have made.
class DotStamp {
public:
    // For an image in RGB32 that is not shared, and outlives this; a painter may be active on it.
    // The pen is opaque, and the painter's dots are not antialiased.
    DotStamp(QImage& image, const QPen& pen);

    // Any coordinates: what falls outside of the image is not drawn.
    void put(int x, int y, QRgb color);

    // To be told when anything else was drawn on the image: until then, a dot that lies just where
    // one of its colour lies is known to change nothing.
    void forget() { ++m_era; }

private:
    struct Run { // pixels side by side, from the dot's coordinates
        int x;
        int y;
        int length;
    };
    static std::vector<Run> runsOf(const QPen& pen);
    void putAtEdge(int x, int y, QRgb color);

    QRgb* m_pixels;
    std::ptrdiff_t m_lineLength; // in pixels
    int m_width;
    int m_height;
    std::vector<Run> m_runs;
    std::vector<std::ptrdiff_t> m_offsets;
    // For each pixel, column by column as points mostly come, the era in which a dot was put there.
    // Within an era all dots have one colour.
    std::vector<quint32> m_eras;
    quint32 m_era = 1;
    QRgb m_color = 0;
    int m_reach = 0; // no pixel of the dot is farther from its coordinates, to either side
};

// Draws segments of a path in order. Those that follow each other up and down one column of pixels,
// in one colour, are drawn as the one segment that covers them: of a path of a million points
// across a thousand columns nearly all are such. The pixels are the same.
class SegmentPath {
public:
    // The painter is to be drawn with by nothing else until the path is finished.
    explicit SegmentPath(QPainter& painter) : m_painter(painter) {}

    void add(QPoint from, QPoint to, QRgb color);
    void finish();

private:
    void draw(QPoint from, QPoint to, QRgb color);

    struct Column {
        int x;
        int top;
        int bottom;
        QPoint end; // where the path has come to
        QRgb color;
    };

    QPainter& m_painter;
    std::optional<Column> m_column; // segments seen, but not drawn yet
};
