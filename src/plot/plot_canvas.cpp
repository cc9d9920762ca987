#include "plot_canvas.h"

#include <QLatin1String>

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

// As the painter's own pen, but for its width.
QPen dotPen(int width) {
    QPen pen;
    pen.setWidth(width);
    return pen;
}

// Most levels lie outside the view, some at the limits of an int: their line and label show
// nothing.
bool isNearImage(int y, const PlotGeometry& geometry) {
    constexpr int highestLabel = 200; // pixels
    return y >= 0 && y <= geometry.height + highestLabel;
}

} // namespace

QImage whiteImage(const PlotGeometry& geometry) {
    QImage image(geometry.width, geometry.height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

QFont plotFont(int pointSize) {
    return QFont(QStringLiteral("Calibri"), pointSize, QFont::Normal, false);
}

Canvas::Canvas(QImage& image, int dotWidth)
    : m_dots(image, dotPen(dotWidth)), m_painter(&image), m_pen(m_painter.pen()),
      m_line(m_painter, dotWidth) {
    m_pen.setWidth(linePenWidth);
    m_painter.setPen(m_pen);
}

void Canvas::setColor(const QColor& color) {
    m_pen.setColor(color);
    painter().setPen(m_pen);
}

void Canvas::settle() {
    m_dots.flush();
    m_line.finish();
}

void paintReferenceLines(Canvas& canvas, const PlotGeometry& geometry) {
    for (const ReferenceLevel& reference : referenceLevels) {
        const int y = geometry.yOfLevel(reference.level);
        if (!isNearImage(y, geometry))
            continue;
        canvas.setColor(reference.color);
        canvas.painter().drawLine(0, y, geometry.width, y);
        canvas.painter().drawText(QRectF(0, 0, geometry.width, y), Qt::AlignBottom | Qt::AlignLeft,
                                  QLatin1String(reference.label));
    }
}

void paintTitle(Canvas& canvas, const PlotGeometry& geometry, const QString& title) {
    canvas.setColor(QColor(0, 0, 0));
    canvas.painter().setFont(plotFont(12));
    canvas.painter().drawText(QRectF(0, 0, geometry.width, titleHeight), Qt::AlignCenter, title);
}
