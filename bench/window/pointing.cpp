#include "window/pointing.h"

#include "hfile.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionButton>
#include <QWindow>

namespace {

void send(QWidget* widget, QEvent::Type type, QPoint position, Qt::MouseButtons held) {
    QWidget* top = widget->window();
    const QPointF inWindow = widget->mapTo(top, position);
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, inWindow, inWindow, top->mapToGlobal(inWindow), button, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(top->windowHandle(), &event);
}

// A check box reacts at its indicator only.
QPoint sensitivePlace(QWidget* widget) {
    if (qobject_cast<QCheckBox*>(widget) == nullptr)
        return widget->rect().center();
    QStyleOptionButton option;
    option.initFrom(widget);
    return widget->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, widget).center();
}

} // namespace

namespace pointing {

QWidget* window() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<MyWidget*>(widget))
            return window;
    return nullptr;
}

QLabel* plotLabel() {
    return window() == nullptr ? nullptr : window()->findChild<QLabel*>("imageLabel");
}

bool isWindowShown() {
    return window() != nullptr && window()->isVisible() && window()->windowHandle()->isExposed() &&
           QApplication::activeModalWidget() == nullptr;
}

void drawBox(QPoint from, QPoint to) {
    send(plotLabel(), QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(plotLabel(), QEvent::MouseMove, to, Qt::LeftButton);
    send(plotLabel(), QEvent::MouseButtonRelease, to, Qt::NoButton);
}

void click(const QString& widget) {
    auto* const target = window()->findChild<QWidget*>(widget);
    const QPoint place = sensitivePlace(target);
    send(target, QEvent::MouseButtonPress, place, Qt::LeftButton);
    send(target, QEvent::MouseButtonRelease, place, Qt::NoButton);
}

} // namespace pointing
