#pragma once

#include <QPoint>
#include <Qt>

class QWidget;

// A mouse whose events go through the whole window, so that its widgets pass on, grab and ignore
// them as they would a real mouse's. Positions are pixels of the widget.
namespace pointer {

void press(QWidget* widget, QPoint position, Qt::MouseButton button = Qt::LeftButton);
void move(QWidget* widget, QPoint position, Qt::MouseButton button = Qt::LeftButton);
void hover(QWidget* widget, QPoint position); // no button held
void release(QWidget* widget, QPoint position, Qt::MouseButton button = Qt::LeftButton);
void click(QWidget* widget); // where it reacts: a check box at its indicator

// Presses at `from` and moves to `to`, straight.
void drag(QWidget* widget, QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton);
void drawBox(QWidget* widget, QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton);

} // namespace pointer
