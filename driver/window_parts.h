#pragma once

#include "give_up.h"
#include "hfile.h"

#include <utility>

class QLabel;
class QLineEdit;
class QRubberBand;

// The window and its private members, by name. An explicit instantiation may name a private member,
// so the program needs no access functions that only tests would call.
namespace parts {

MyWidget* window(); // the one window, shown or not; null while there is none

QLabel* imageLabel();
QLabel* hintLabel();
QLabel* nameLabel();
QRubberBand* rubberBand();
QPoint boxStart();
QPoint boxEnd();
QStringList fileList();
QString chosenPath();
QPixmap plotPixmap();
QImage plotImage();
QRect screenRect();
QDir startDir();
QPixmap genomePixmap();

using NamedWidget = std::pair<QString, QWidget*>;
QList<NamedWidget> widgets();                  // every member that is a widget, with its name
QWidget* widget(const QString& name);          // gives up on a name that no widget has
QString nameOf(const QObject* widgetOrLayout); // empty for what is not a member

template <typename Widget>
Widget* as(const QString& name) {
    if (auto* widget = qobject_cast<Widget*>(parts::widget(name)))
        return widget;
    giveUp(QStringLiteral("\"%1\" is not a %2").arg(name, Widget::staticMetaObject.className()));
}

} // namespace parts
