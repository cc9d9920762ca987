#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

class QFileDialog;
class QInputDialog;

// The program's two dialogs, worked through their own fields and buttons. All but the first three
// need one to be open.
namespace dialogs {

QFileDialog* file(); // the one that is open; null without
QInputDialog* name();
bool isAnyOpen();

void fill(const QString& text);
void choose(const QString& fileName); // one of those listed
void focusList();                     // as a click there does; a choice then shows in the field
void accept();
void cancel();
void answer(const QString& text); // fill, and accept

QStringList listedFiles(); // what the file dialog offers to choose
QJsonObject state();       // empty while none is open

} // namespace dialogs
