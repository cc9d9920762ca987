#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

class QFileDialog;
class QInputDialog;

// The program's two dialogs, worked through their own fields and buttons.
namespace dialogs {

QFileDialog* file(); // the one that is open; null without
QInputDialog* name();
bool isAnyOpen();

void openFile(const QString& path);
void pickFile(const QString& name); // in the list, which shows it
void cancelFile();
QStringList listedFiles(); // what the file dialog offers to pick

void acceptName(const QString& text);
void cancelName(const QString& text);

QJsonObject state();

} // namespace dialogs
