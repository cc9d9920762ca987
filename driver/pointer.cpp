#include "pointer.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionButton>
#include <QWidget>
#include <QWindow>

namespace {

QPoint sensitivePlace(QWidget* widget) {
    if (!qobject_cast<QCheckBox*>(widget))
        return widget->rect().center();
    QStyleOptionButton option;
    option.initFrom(widget);
    return widget->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, widget).center();
}

void send(QWidget* widget, QEvent::Type type, QPoint position, Qt::MouseButton button,
          Qt::MouseButtons held) {
    QWidget* top = widget->window();
    const QPointF inWindow = widget->mapTo(top, position);
    QMouseEvent event(type, inWindow, inWindow, top->mapToGlobal(inWindow), button, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(top->windowHandle(), &event);
}

} // namespace

namespace pointer {

void press(QWidget* widget, QPoint position, Qt::MouseButton button) {
    send(widget, QEvent::MouseButtonPress, position, button, button);
}

void move(QWidget* widget, QPoint position, Qt::MouseButton button) {
    send(widget, QEvent::MouseMove, position, Qt::NoButton, button);
}

void hover(QWidget* widget, QPoint position) {
    send(widget, QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton);
}

void release(QWidget* widget, QPoint position, Qt::MouseButton button) {
    send(widget, QEvent::MouseButtonRelease, position, button, Qt::NoButton);
}

void click(QWidget* widget) {
    const QPoint place = sensitivePlace(widget);
    press(widget, place);
    release(widget, place);
}

void drag(QWidget* widget, QPoint from, QPoint to, Qt::MouseButton button) {
    constexpr int moves = 4;
    press(widget, from, button);
    for (int i = 1; i <= moves; ++i)
        move(widget, from + (to - from) * i / moves, button);
}

void drawBox(QWidget* widget, QPoint from, QPoint to, Qt::MouseButton button) {
    drag(widget, from, to, button);
    release(widget, to, button);
}

} // namespace pointer
