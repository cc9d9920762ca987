#pragma once

#include <QPoint>
#include <QString>

class QLabel;
class QWidget;

// The program's window and a mouse over it.
namespace pointing {

QWidget* window();    // null until it is there
QLabel* plotLabel();  // shows the plot
bool isWindowShown(); // and no dialog before it

void drawBox(QPoint from, QPoint to); // pixels of the plot
void click(const QString& widget);    // by its object name

} // namespace pointing
