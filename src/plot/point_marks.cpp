#include "point_marks.h"

#include <QPainter>
#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <utility>

DotStamp::DotStamp(QImage& image, const QPen& pen)
    : m_pixels(reinterpret_cast<QRgb*>(image.bits())),
      m_lineLength(image.bytesPerLine() / static_cast<std::ptrdiff_t>(sizeof(QRgb))),
      m_width(image.width()), m_height(image.height()), m_runs(runsOf(pen)),
      m_isTaken(std::make_unique<bool[]>(placeOf(m_width, 0))) {
    for (const Run& run : m_runs)
        m_reach =
            std::max({m_reach, std::abs(run.x), std::abs(run.x + run.length), std::abs(run.y)});
    for (const Run& run : m_runs)
        for (int i = 0; i < run.length; ++i)
            m_offsets.push_back(run.y * m_lineLength + run.x + i);
}

std::vector<DotStamp::Run> DotStamp::runsOf(const QPen& pen) {
    const int center = 2 * pen.width() + 2;
    QImage sample(2 * center, 2 * center, QImage::Format_RGB32);
    sample.fill(Qt::white);
    QPen black(pen);
    black.setColor(Qt::black);
    QPainter painter(&sample);
    painter.setPen(black);
    painter.drawPoint(center, center);
    painter.end();

    std::vector<Run> runs;
    for (int y = 0; y < sample.height(); ++y) {
        bool inRun = false;
        for (int x = 0; x < sample.width(); ++x) {
            const bool isDrawn = sample.pixel(x, y) == qRgb(0, 0, 0);
            if (isDrawn && inRun)
                ++runs.back().length;
            else if (isDrawn)
                runs.push_back({x - center, y - center, 1});
            inRun = isDrawn;
        }
    }
    return runs;
}

void DotStamp::put(std::span<const int> x, std::span<const int> y, QRgb color) {
    if (color != m_color || m_count + x.size() > m_collected.size())
        flush();
    m_color = color;
    size_t count = m_count;
    for (size_t i = 0; i < x.size(); ++i) {
        if (isAtEdge(x[i], y[i])) {
            putAtEdge(x[i], y[i]);
            continue;
        }
        // Branch-free: writes every dot, and advances only past those in a new place.
        bool& isTaken = m_isTaken[placeOf(x[i], y[i])];
        m_collected[count] = {x[i], y[i]};
        count += isTaken ? 0 : 1;
        isTaken = true;
    }
    m_count = count;
}

void DotStamp::flush() {
    for (size_t i = 0; i < m_count; ++i) {
        const auto [x, y] = m_collected[i];
        m_isTaken[placeOf(x, y)] = false;
        QRgb* const center = m_pixels + y * m_lineLength + x;
        for (const std::ptrdiff_t offset : m_offsets)
            center[offset] = m_color;
    }
    m_count = 0;
}

void DotStamp::putAtEdge(int x, int y) {
    if (x <= -m_reach || y < -m_reach || x >= m_width + m_reach || y >= m_height + m_reach)
        return;
    for (const Run& run : m_runs) {
        const int line = y + run.y;
        const int start = std::max(x + run.x, 0);
        const int end = std::min(x + run.x + run.length, m_width);
        if (line >= 0 && line < m_height && start < end)
            std::fill_n(m_pixels + line * m_lineLength + start, end - start, m_color);
    }
}

void SegmentPath::lift() {
    drawColumn();
    m_isDown = false;
}

void SegmentPath::finish() {
    lift();
    m_penColor.reset();
}

void SegmentPath::start(QPoint to, QRgb color) {
    drawColumn();
    const QPoint from = std::exchange(m_at, to);
    if (!std::exchange(m_isDown, true))
        return;
    m_isColumn = from.x() == to.x() && isNear(from) && isNear(to);
    if (!m_isColumn)
        return draw(from, to, color);
    std::tie(m_top, m_bottom) = std::minmax(from.y(), to.y());
    m_color = color;
}

void SegmentPath::drawColumn() {
    if (std::exchange(m_isColumn, false))
        draw({m_at.x(), m_top}, {m_at.x(), m_bottom}, m_color);
}

void SegmentPath::draw(QPoint from, QPoint to, QRgb color) {
    if (m_penColor != color) {
        QPen pen = m_painter.pen();
        pen.setWidth(m_penWidth);
        pen.setColor(QColor::fromRgb(color));
        m_painter.setPen(pen);
        m_penColor = color;
    }
    m_painter.drawLine(from, to);
}
