#include "driver/dialogs.h"

#include "driver/pointer.h"
#include "driver/window_parts.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QJsonArray>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

namespace {

template <typename Dialog>
Dialog* shown() {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
}

void pressButton(QDialog* dialog, QDialogButtonBox::StandardButton which) {
    pointer::click(dialog->findChild<QDialogButtonBox*>()->button(which));
}

void fillIn(QDialog* dialog, const QString& text) {
    dialog->findChild<QLineEdit*>()->setText(text);
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

// The whole path at once: typed key by key it would race the list of completions, which the toolkit
// fills from a thread of its own.
void openFile(const QString& path) {
    fillIn(file(), path);
    pressButton(file(), QDialogButtonBox::Open);
}

void pickFile(const QString& name) {
    const auto* list = file()->findChild<QListView*>(QStringLiteral("listView"));
    const auto row = static_cast<int>(listedFiles().indexOf(name));
    list->selectionModel()->select(list->model()->index(row, 0, list->rootIndex()),
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    pressButton(file(), QDialogButtonBox::Open);
}

void cancelFile() {
    pressButton(file(), QDialogButtonBox::Cancel);
}

QStringList listedFiles() {
    const auto* list = file()->findChild<QListView*>(QStringLiteral("listView"));
    QStringList names;
    for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row)
        names.append(list->model()->index(row, 0, list->rootIndex()).data().toString());
    return names;
}

void acceptName(const QString& text) {
    fillIn(name(), text);
    pressButton(name(), QDialogButtonBox::Ok);
}

void cancelName(const QString& text) {
    fillIn(name(), text);
    pressButton(name(), QDialogButtonBox::Cancel);
}

QJsonObject state() {
    if (const QFileDialog* dialog = file())
        return fileState(dialog);
    if (const QInputDialog* dialog = name())
        return nameState(dialog);
    return {};
}

} // namespace dialogs
