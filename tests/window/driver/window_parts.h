#pragma once

#include "hfile.h"

#include <utility>

class QLabel;
class QLineEdit;
class QRubberBand;

// The window's private members, read by name. An explicit instantiation may name a private member,
// which spares the program a door that only tests would use.
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
QWidget* widget(const QString& name);          // null for a name that no member has
QString nameOf(const QObject* widgetOrLayout); // empty for what is no member

} // namespace parts
