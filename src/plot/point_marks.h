#pragma once

#include <QImage>
#include <QPen>
#include <QPoint>
#include <QRgb>
#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

class QPainter;

// The quick way to put very many equal dots on an image. The painter draws one dot, and where its
// pixels are is then true of every dot of that pen: so the image is, pixel by pixel, the one that
// the painter's drawPoint() would have made.
//
// Dots of one colour may be drawn in any order, and two in one place as one. So they are collected
// until there are enough, or one of another colour comes.
class DotStamp {
public:
    // For an image in RGB32 that is not shared, and outlives this; a painter may be active on it.
    // The pen is opaque, and the painter's dots are not antialiased.
    DotStamp(QImage& image, const QPen& pen);

    // Any coordinates: what falls outside of the image is not drawn.
    void put(int x, int y, QRgb color) {
        if (color != m_color) {
            flush();
            m_color = color;
        }
        if (x < m_reach || y < m_reach || x >= m_width - m_reach || y >= m_height - m_reach) {
            putAtEdge(x, y);
            return;
        }
        // Whether a place is taken can't be foreseen: it is better calculated with than asked.
        bool& isTaken = m_isTaken[placeOf(x, y)];
        m_collected[m_count] = {x, y};
        m_count += isTaken ? 0 : 1;
        isTaken = true;
        if (m_count == m_collected.size())
            flush();
    }

    // Draws what was collected. To be called before anything else is drawn on the image, and at the
    // end.
    void flush();

private:
    struct Run { // pixels side by side, from the dot's coordinates
        int x;
        int y;
        int length;
    };
    struct Place {
        int x;
        int y;
    };
    static std::vector<Run> runsOf(const QPen& pen);
    void putAtEdge(int x, int y);

    // Column by column, as points mostly come.
    size_t placeOf(int x, int y) const {
        return static_cast<size_t>(x) * static_cast<size_t>(m_height) + static_cast<size_t>(y);
    }

    QRgb* m_pixels;
    std::ptrdiff_t m_lineLength; // in pixels
    int m_width;
    int m_height;
    std::vector<Run> m_runs;
    std::vector<std::ptrdiff_t> m_offsets;
    std::array<Place, 1024> m_collected;
    size_t m_count = 0;
    std::unique_ptr<bool[]> m_isTaken; // for each pixel: a dot there is collected
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
