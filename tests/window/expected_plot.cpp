#include "expected_plot.h"

#include <QCryptographicHash>
#include <QPainter>
#include <QPixmap>
#include <algorithm>

namespace {

void paintStripes(QPainter& painter, QPen& pen, const ExpectedView& view) {
    const struct {
        double level;
        const char* label;
        QColor color;
    } stripes[] = {{7.3, "7.3", {25, 180, 25}},
                   {6, "6", {140, 140, 140}},
                   {5, "5", {170, 170, 170}},
                   {4, "4", {200, 200, 200}},
                   {3, "3", {230, 230, 230}}};
    for (const auto& stripe : stripes) {
        const int y = view.height - static_cast<int>(view.pixPerY * (stripe.level - view.minY));
        pen.setColor(stripe.color);
        painter.setPen(pen);
        painter.drawLine(0, y, view.width, y);
        painter.drawText(QRect(0, 0, view.width, y), Qt::AlignBottom | Qt::AlignLeft, stripe.label);
    }
}

void paintTitle(QPainter& painter, QPen& pen, const ExpectedView& view, const QString& title) {
    pen.setColor(QColor(0, 0, 0));
    painter.setPen(pen);
    painter.setFont(QFont("Calibri", 12, QFont::Normal, false));
    painter.drawText(QRect(0, 0, view.width, 20), Qt::AlignCenter, title);
}

QString grouped(int number) {
    QString text = QString::number(number);
    for (qsizetype i = text.size() - 3; i > 0; i -= 3)
        text.insert(i, u',');
    return text;
}

void paintScale(QPainter& painter, const ExpectedView& view) {
    const QRect area(0, 0, view.width, view.height - 2);
    painter.setFont(QFont("Calibri", 10, QFont::Normal, false));
    painter.drawText(area, Qt::AlignBottom | Qt::AlignLeft, grouped(view.realMinX));
    painter.drawText(area, Qt::AlignBottom | Qt::AlignRight, grouped(view.realMaxX));
    painter.drawText(area, Qt::AlignBottom | Qt::AlignCenter,
                     "|<-- " + grouped(view.realMaxX - view.realMinX) + " -->|");
}

void paintPoints(QPainter& painter, QPen& pen, const ExpectedView& view,
                 const ChromosomeLook& look) {
    for (qsizetype i = look.joined ? 1 : 0; i < view.positions.size(); ++i) {
        const int position = view.positions[i];
        const bool isMarked = look.from <= position && position <= look.to;
        pen.setColor(isMarked ? QColor(255, 50, 50) : QColor(50, 50, 255));
        painter.setPen(pen);
        const QPoint point(view.x(position), view.y(view.values[i]));
        if (look.joined)
            painter.drawLine(QPoint(view.x(view.positions[i - 1]), view.y(view.values[i - 1])),
                             point);
        else
            painter.drawPoint(point);
    }
}

void paintLabel(QPainter& painter, const QString& label, int from, int to, int height) {
    painter.drawText(QRect(from, 0, to - from, height), Qt::AlignBottom | Qt::AlignCenter, label);
}

void paintGenome(QPainter& painter, QPen& pen, const ExpectedView& view, const GenomeLook& look) {
    int labelStart = 0, labelEnd = 0, previousX = 0, red = 255;
    QString tag, previousTag = look.tags[0];
    for (qsizetype i = 0; i < view.positions.size(); ++i) {
        const int x = view.x(view.positions[i]);
        labelEnd = i == 0 ? x : previousX;
        labelStart = i == 0 ? x : labelStart;
        previousX = x;
        qsizetype k = look.startValues.size() - 1;
        for (; k > 0; --k)
            if (look.startValues[k] <= view.positions[i]) {
                red = look.colors[k];
                break;
            }
        tag = look.tags[k];
        if (tag != previousTag) {
            painter.setFont(QFont("Calibri", 10, QFont::Normal, false));
            paintLabel(painter, previousTag, labelStart, labelEnd, view.height);
            labelStart = x;
        }
        previousTag = tag;
        pen.setColor(QColor(red, 50, 50));
        painter.setPen(pen);
        painter.drawPoint(x, view.y(view.values[i]));
    }
    paintLabel(painter, tag, labelStart, labelEnd, view.height);
}

template <typename Paint>
QImage painted(const ExpectedView& view, bool stripes, Paint paint) {
    QPixmap pixmap(view.width, view.height);
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    QPen pen = painter.pen();
    pen.setWidth(2);
    painter.setPen(pen);
    if (stripes)
        paintStripes(painter, pen, view);
    paint(painter, pen);
    painter.end();
    return pixmap.toImage();
}

} // namespace

ExpectedView::ExpectedView(QList<int> thePositions, QList<double> theValues, QSize size)
    : positions(std::move(thePositions)), values(std::move(theValues)), width(size.width()),
      height(size.height()) {
    const auto [low, high] = std::minmax_element(values.cbegin(), values.cend());
    realMinX = positions.first();
    realMaxX = positions.last();
    realMaxY = *high;
    const int dx = static_cast<int>(0.05 * (realMaxX - realMinX));
    const double dy = 0.05 * (*high - *low);
    minX = realMinX - dx;
    maxX = realMaxX + dx;
    minY = *low - dy;
    maxY = *high + dy;
    pixPerX = static_cast<double>(width) / (maxX - minX);
    pixPerY = height / (maxY - minY);
}

int ExpectedView::x(int position) const {
    return static_cast<int>(pixPerX * (position - minX));
}

int ExpectedView::y(double value) const {
    return height - static_cast<int>(pixPerY * (value - minY));
}

QStringList ExpectedView::differencesTo(const State& state) const {
    QStringList differences;
    const auto compare = [&](const char* name, auto expected, auto actual) {
        if (expected != actual)
            differences.append(
                QStringLiteral("%1 is %2, not %3").arg(name).arg(actual).arg(expected));
    };
    compare("minX", minX, state.integer("minX"));
    compare("maxX", maxX, state.integer("maxX"));
    compare("realMinX", realMinX, state.integer("realMinX"));
    compare("realMaxX", realMaxX, state.integer("realMaxX"));
    compare("minY", minY, state.number("minY"));
    compare("maxY", maxY, state.number("maxY"));
    compare("realMaxY", realMaxY, state.number("realMaxY"));
    compare("pixPerX", pixPerX, state.number("pixPerX"));
    compare("pixPerY", pixPerY, state.number("pixPerY"));
    compare("fwidth", width, state.integer("fwidth"));
    compare("fheight", height, state.integer("fheight"));
    for (const char* margin : {"xmargin", "xmargin2", "ymargin"})
        compare(margin, 0, state.integer(margin));
    if (positions != state.integers("Pos_list") || values != state.numbers("Value_list"))
        differences.append(QStringLiteral("the points differ"));
    return differences;
}

QImage expectedChromosomePlot(const ExpectedView& view, const ChromosomeLook& look) {
    return painted(view, look.stripes, [&](QPainter& painter, QPen& pen) {
        pen.setWidth(4);
        paintPoints(painter, pen, view, look);
        paintTitle(painter, pen, view, "max=" + QString::number(view.realMaxY, 'g', 6));
        paintScale(painter, view);
    });
}

QImage expectedGenomePlot(const ExpectedView& view, const GenomeLook& look) {
    return painted(view, look.stripes, [&](QPainter& painter, QPen& pen) {
        paintGenome(painter, pen, view, look);
        paintTitle(painter, pen, view,
                   look.title + ", max(-logP)=" + QString::number(view.realMaxY, 'g', 6));
    });
}

QString picture(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_RGB32);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (int y = 0; y < plain.height(); ++y)
        hash.addData({reinterpret_cast<const char*>(plain.constScanLine(y)), plain.width() * 4});
    return QStringLiteral("%1x%2 %3")
        .arg(plain.width())
        .arg(plain.height())
        .arg(QLatin1String(hash.result().toHex()));
}

int pixelsOf(const QImage& image, const QColor& color) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == color;
    return count;
}
