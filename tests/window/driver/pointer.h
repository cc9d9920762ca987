#pragma once

#include <QPoint>
#include <Qt>

class QWidget;

// A mouse and a keyboard that work on a whole window, so that its widgets pass on, grab and ignore
// events as they do under a real pointer.
namespace pointer {

void press(QWidget* widget, QPoint position, Qt::MouseButton button);
void move(QWidget* widget, QPoint position, Qt::MouseButton button);
void hover(QWidget* widget, QPoint position); // no button held
void release(QWidget* widget, QPoint position, Qt::MouseButton button);
void click(QWidget* widget); // where it reacts: a check box at its indicator

} // namespace pointer
