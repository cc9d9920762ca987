#include "plot_canvas.h"

#include <QFontMetricsF>
#include <QLatin1String>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int titleHeight = 20;
constexpr int linePenWidth = 2;

struct ReferenceLevel {
    double level; // -log10 p
    const char* label;
    QColor color;
};

constexpr ReferenceLevel referenceLevels[] = {
    {7.3, "7.3", QColor(25, 180, 25)}, {6.0, "6", QColor(140, 140, 140)},
    {5.0, "5", QColor(170, 170, 170)}, {4.0, "4", QColor(200, 200, 200)},
    {3.0, "3", QColor(230, 230, 230)},
};

// As the painter's own pen, but for its width and shape.
QPen dotPen(const DotLook& dot, int magnification) {
    QPen pen;
    pen.setWidth(dot.width * magnification);
    pen.setCapStyle(dot.shape);
    return pen;
}

// Most levels lie outside the view, some at the limits of an int: their line and label show
// nothing.
bool isNearImage(int y, const PlotGeometry& geometry) {
    const int highestLabel = 200 * geometry.magnification; // pixels
    return y >= 0 && y <= geometry.height + highestLabel;
}

} // namespace

QImage whiteImage(const PlotGeometry& geometry) {
    QImage image(geometry.width, geometry.height, QImage::Format_RGB32);
    image.setDotsPerMeterX(image.dotsPerMeterX() * geometry.magnification);
    image.setDotsPerMeterY(image.dotsPerMeterY() * geometry.magnification);
    image.fill(Qt::white);
    return image;
}

QFont plotFont(int pointSize) {
    return QFont(QStringLiteral("Calibri"), pointSize, QFont::Normal, false);
}

Canvas::Canvas(QImage& image, const PlotGeometry& geometry, const DotLook& dot)
    : m_geometry(geometry), m_dots(image, dotPen(dot, geometry.magnification)), m_marks(image),
      m_markPainter(&image), m_painter(m_markPainter), m_pen(m_painter.pen()),
      m_line(m_markPainter, dot.width * geometry.magnification) {
    m_pen.setWidth(linePenWidth * geometry.magnification);
}

Canvas::Canvas(QImage& marks, QPaintDevice& page, const PlotGeometry& geometry, const DotLook& dot)
    : m_geometry(geometry), m_dots(marks, dotPen(dot, geometry.magnification)), m_marks(marks),
      m_markPainter(&marks), m_page(std::in_place, &page), m_painter(*m_page),
      m_pen(m_painter.pen()), m_line(m_markPainter, dot.width * geometry.magnification) {
    m_pen.setWidth(linePenWidth * geometry.magnification);
    m_painter.setRenderHint(QPainter::LosslessImageRendering);
}

void Canvas::finish() {
    settle();
    if (!m_page)
        return;
    m_markPainter.end();
    m_painter.drawImage(QRect(0, 0, m_geometry.width, m_geometry.height), m_marks);
    for (const Letters& letters : m_letters) {
        m_painter.setPen(letters.pen);
        m_painter.setFont(letters.font);
        m_painter.drawText(letters.area, letters.alignment, letters.text);
    }
}

void Canvas::settle() {
    m_dots.flush();
    m_line.finish();
}

void Canvas::addColor(QRgb color) {
    std::erase(m_markColors, color);
    m_markColors.push_back(color);
}

bool Canvas::hasMarks(const QRectF& area) {
    settle();
    const QRect pixels = area.toAlignedRect() & m_marks.rect();
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(m_marks.constScanLine(y));
        for (int x = pixels.left(); x <= pixels.right(); ++x)
            if (std::find(m_markColors.begin(), m_markColors.end(), line[x]) != m_markColors.end())
                return true;
    }
    return false;
}

void Canvas::setFont(const QFont& font) {
    m_painter.setFont(font);
}

void Canvas::drawLine(int x1, int y1, int x2, int y2) {
    settle();
    m_painter.setPen(m_pen);
    m_painter.drawLine(x1, y1, x2, y2);
}

void Canvas::drawThinLine(int x1, int y1, int x2, int y2) {
    settle();
    QPen pen = m_pen;
    pen.setWidth(m_geometry.magnification);
    m_painter.setPen(pen);
    m_painter.drawLine(x1, y1, x2, y2);
}

QSizeF Canvas::sizeOf(const QString& text) const {
    const QFontMetricsF metrics(m_painter.font(), m_painter.device());
    const double overhang = 2.0 * m_geometry.magnification; // of slanted letters
    return {std::ceil(metrics.horizontalAdvance(text) + overhang), std::ceil(metrics.height())};
}

void Canvas::drawText(const QRectF& area, int alignment, const QString& text) {
    if (m_page && m_hasMarks) {
        m_letters.push_back({area, alignment, text, m_pen, m_painter.font()});
        return;
    }
    settle();
    m_painter.setPen(m_pen);
    m_painter.drawText(area, alignment, text);
}

void paintReferenceLines(Canvas& canvas) {
    const PlotGeometry& geometry = canvas.geometry();
    for (const ReferenceLevel& reference : referenceLevels) {
        const int y = geometry.yOfLevel(reference.level);
        if (!isNearImage(y, geometry))
            continue;
        canvas.setColor(reference.color);
        canvas.drawLine(0, y, geometry.width, y);
        canvas.drawText(QRectF(0, 0, geometry.width, y), Qt::AlignBottom | Qt::AlignLeft,
                        QLatin1String(reference.label));
    }
}

void paintTitle(Canvas& canvas, const QString& title) {
    const PlotGeometry& geometry = canvas.geometry();
    canvas.setColor(QColor(0, 0, 0));
    canvas.setFont(plotFont(12));
    canvas.drawText(QRectF(0, 0, geometry.width, titleHeight * geometry.magnification),
                    Qt::AlignCenter, title);
}
