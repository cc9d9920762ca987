#include "scenario/window_state.h"

#include "window_parts.h"

#include <QCheckBox>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QRubberBand>

namespace {

QJsonArray rectangle(const QRect& rect) {
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

QJsonArray point(const QPoint& point) {
    return {point.x(), point.y()};
}

QJsonObject picture(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_RGB32);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (int y = 0; y < plain.height(); ++y)
        hash.addData({reinterpret_cast<const char*>(plain.constScanLine(y)), plain.width() * 4});
    return {{"width", plain.width()},
            {"height", plain.height()},
            {"sha1", QString::fromLatin1(hash.result().toHex())}};
}

QString textOf(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return label->text();
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        return edit->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return button->text();
    return {};
}

QJsonObject widgetState(QWidget* widget) {
    QJsonObject state{{"visible", widget->isVisibleTo(parts::window())},
                      {"enabled", widget->isEnabled()},
                      {"text", textOf(widget)},
                      {"styleSheet", widget->styleSheet()},
                      {"geometry", rectangle(widget->geometry())},
                      {"needed", rectangle(QRect(QPoint(), widget->minimumSizeHint()))}};
    if (const auto* box = qobject_cast<const QCheckBox*>(widget)) {
        state["checked"] = box->checkState() == Qt::Checked;
        state["tristate"] = box->isTristate();
    }
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        state["background"] = label->palette().color(QPalette::Window).name(QColor::HexArgb);
        state["filled"] = label->autoFillBackground();
        state["format"] = label->textFormat();
    }
    return state;
}

// A device may stand in the log's place, and have no end.
QString logText() {
    QFile log(QStringLiteral("Pelmark_log.txt"));
    return QFileInfo(log).isFile() && log.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(log.readAll())
               : QString();
}

void addMembers(QJsonObject& state) {
    state["boxStart"] = point(parts::boxStart());
    state["boxEnd"] = point(parts::boxEnd());
    state["fileList"] = QJsonArray::fromStringList(parts::fileList());
    state["chosenPath"] = parts::chosenPath();
    state["startDir"] = parts::startDir().absolutePath();
    state["screenRect"] = rectangle(parts::screenRect());
    state["plotPixmap"] = picture(parts::plotPixmap().toImage());
    state["plotImage"] = picture(parts::plotImage());
    state["genomePixmap"] = picture(parts::genomePixmap().toImage());
    state["shown"] = picture(parts::imageLabel()->pixmap().toImage());
}

} // namespace

QJsonObject windowState() {
    MyWidget* window = parts::window();
    QJsonObject state{{"title", window->windowTitle()},
                      {"visible", window->isVisible()},
                      {"position", point(window->pos())},
                      {"isPlainWindow", window->windowType() == Qt::Window},
                      {"mouseTracking", window->hasMouseTracking()},
                      {"log", logText()}};
    QJsonObject widgets;
    for (const auto& [name, widget] : parts::widgets())
        widgets[name] = widgetState(widget);
    state["widgets"] = widgets;
    state["bandShape"] = parts::rubberBand()->shape();
    state["bandParent"] = parts::nameOf(parts::rubberBand()->parentWidget());
    addMembers(state);
    return state;
}

QJsonArray metaMethods() {
    QJsonArray methods;
    const QMetaObject& meta = MyWidget::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        const QString access = method.access() == QMetaMethod::Public      ? "public"
                               : method.access() == QMetaMethod::Protected ? "protected"
                                                                           : "private";
        const QString kind = method.methodType() == QMetaMethod::Signal ? "signal"
                             : method.methodType() == QMetaMethod::Slot ? "slot"
                                                                        : "method";
        methods.append(QStringLiteral("%1 %2 %3 %4 %5")
                           .arg(i - meta.methodOffset())
                           .arg(access, kind, QString::fromLatin1(method.typeName()),
                                QString::fromLatin1(method.methodSignature())));
    }
    return methods;
}
