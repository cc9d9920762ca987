#pragma once

#include <QImage>
#include <QPen>
#include <QPoint>
#include <QRgb>
#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <vector>

class QPainter;

// Puts very many equal dots on an image. The painter draws one sample dot, and its pixels are then
// copied for every other dot of that pen, so the image equals what the painter's drawPoint() makes,
// pixel by pixel.
//
// Dots of one colour are collected, and drawn in any order with two in one place drawn once: when
// there are enough, when one of another colour comes, and at flush().
class DotStamp {
public:
    // For an image in RGB32 that is not shared, and outlives this; a painter may be active on it.
    // The pen is opaque, and the painter's dots are not antialiased.
    DotStamp(QImage& image, const QPen& pen);

    // Puts a dot at each x and y; the spans have the same length, at most mostAtOnce. Any
    // coordinates: what falls outside the image is not drawn.
    void put(std::span<const int> x, std::span<const int> y, QRgb color);
    static constexpr size_t mostAtOnce = 256;

    // Draws what was collected.
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
    bool isAtEdge(int x, int y) const {
        return x < m_reach || y < m_reach || x >= m_width - m_reach || y >= m_height - m_reach;
    }
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
    std::array<Place, 4 * mostAtOnce> m_collected;
    size_t m_count = 0;
    std::unique_ptr<bool[]> m_isTaken; // for each pixel: a dot there is collected
    QRgb m_color = 0;
    int m_reach = 0; // no pixel of the dot is farther from its coordinates, to either side
};

// Draws segments of a path in order. Consecutive segments up and down one column of pixels in one
// colour are drawn as the one segment that covers them, with the same pixels: of a path of a
// million points across a thousand columns nearly all are such.
class SegmentPath {
public:
    SegmentPath(QPainter& painter, int penWidth) : m_painter(painter), m_penWidth(penWidth) {}

    // Draws a segment from where the path is, if it is anywhere.
    void goTo(QPoint to, QRgb color) {
        if (m_isColumn && to.x() == m_at.x() && color == m_color && isNear(to)) {
            m_top = std::min(m_top, to.y());
            m_bottom = std::max(m_bottom, to.y());
            m_at = to;
        } else {
            start(to, color);
        }
    }

    // The path is nowhere until it goes on.
    void lift();

    // Lifts the path. The painter may be used by others until the path goes on.
    void finish();

private:
    // Far enough outside of any screen to draw nothing, near enough for the painter's own
    // arithmetic.
    static bool isNear(QPoint point) {
        constexpr int farthest = 10000;
        return point.y() > -farthest && point.y() < farthest;
    }
    void start(QPoint to, QRgb color);
    void drawColumn();
    void draw(QPoint from, QPoint to, QRgb color);

    QPainter& m_painter;
    int m_penWidth;
    std::optional<QRgb> m_penColor; // of the painter's pen, where the path has set it
    bool m_isDown = false;
    QPoint m_at;             // where the path is, if it is down
    bool m_isColumn = false; // segments in one column were seen, but not drawn yet:
    int m_top = 0;
    int m_bottom = 0;
    QRgb m_color = 0;
};
