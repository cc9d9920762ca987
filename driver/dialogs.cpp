#include "dialogs.h"

#include "pointer.h"
#include "window_parts.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QJsonArray>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

namespace {

template <typename Dialog>
Dialog* shown() {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
}

void press(QDialogButtonBox::ButtonRole role) {
    const auto* box = QApplication::activeModalWidget()->findChild<QDialogButtonBox*>();
    for (QAbstractButton* button : box->buttons())
        if (box->buttonRole(button) == role)
            return pointer::click(button);
}

QTreeView* fileList() {
    return dialogs::file()->findChild<QTreeView*>(QStringLiteral("treeView"));
}

QJsonObject fileState(const QFileDialog* dialog) {
    return {{"kind", "file"},
            {"title", dialog->windowTitle()},
            {"directory", dialog->directory().absolutePath()},
            {"filters", QJsonArray::fromStringList(dialog->nameFilters())},
            {"options", static_cast<int>(dialog->options())},
            {"opens", dialog->acceptMode() == QFileDialog::AcceptOpen},
            {"parentIsWindow", dialog->parentWidget() == parts::window()}};
}

QJsonObject nameState(const QInputDialog* dialog) {
    return {{"kind", "name"},
            {"title", dialog->windowTitle()},
            {"prompt", dialog->labelText()},
            {"proposed", dialog->textValue()},
            {"normal", dialog->textEchoMode() == QLineEdit::Normal},
            {"parentIsWindow", dialog->parentWidget() == parts::window()}};
}

} // namespace

namespace dialogs {

QFileDialog* file() {
    return shown<QFileDialog>();
}

QInputDialog* name() {
    return shown<QInputDialog>();
}

bool isAnyOpen() {
    return QApplication::activeModalWidget() != nullptr;
}

// The whole text at once: typed key by key it would race the list of completions, which Qt fills
// from a thread of its own.
void fill(const QString& text) {
    QApplication::activeModalWidget()->findChild<QLineEdit*>()->setText(text);
}

void choose(const QString& fileName) {
    QTreeView* list = fileList();
    const auto row = static_cast<int>(listedFiles().indexOf(fileName));
    list->selectionModel()->setCurrentIndex(list->model()->index(row, 0, list->rootIndex()),
                                            QItemSelectionModel::ClearAndSelect |
                                                QItemSelectionModel::Rows);
}

void focusList() {
    fileList()->setFocus();
}

void accept() {
    press(QDialogButtonBox::AcceptRole);
}

void cancel() {
    press(QDialogButtonBox::RejectRole);
}

void answer(const QString& text) {
    fill(text);
    accept();
}

QStringList listedFiles() {
    const QTreeView* list = fileList();
    QStringList names;
    for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row)
        names.append(list->model()->index(row, 0, list->rootIndex()).data().toString());
    return names;
}

QJsonObject state() {
    if (const QFileDialog* dialog = file())
        return fileState(dialog);
    if (const QInputDialog* dialog = name())
        return nameState(dialog);
    return {};
}

} // namespace dialogs
